// SPDX-License-Identifier: MIT
#include "decoders/integrity.h"

#include <optional>

#include "core/number_text.h"

namespace morvane {

std::string_view finding_kind_name(FindingKind kind) {
  switch (kind) {
    case FindingKind::SequenceGap: return "sequence_gap";
    case FindingKind::SequenceRepeat: return "sequence_repeat";
    case FindingKind::TimeBackwards: return "time_backwards";
    case FindingKind::TimeJump: return "time_jump";
    case FindingKind::PastFrameEnd: return "past_frame_end";
    case FindingKind::EmptyFrame: return "empty_frame";
    case FindingKind::UnknownIdentifier: return "unknown_identifier";
    case FindingKind::PartialFrame: return "partial_frame";
    case FindingKind::PastEndOfFile: return "past_end_of_file";
    case FindingKind::Restart: return "restart";
  }
  return "";
}

std::string_view catalogue_list_name(CatalogueList list) {
  switch (list) {
    case CatalogueList::HK: return "hk";
    case CatalogueList::Science: return "science";
    case CatalogueList::Information: return "information";
  }
  return "";
}

namespace {

constexpr int32_t kSequenceModulus = 16384;
constexpr int32_t kProgressEntries = 1 << 16;

class ReportBuilder {
 public:
  ReportBuilder(IntegrityReport& report, size_t max) : report_(report), max_(max) {}
  void add(FindingKind kind, CatalogueList list, int32_t index, std::string text) {
    ++report_.counts[static_cast<size_t>(kind)];
    if (report_.findings.size() >= max_) {
      report_.truncated = true;
      return;
    }
    report_.findings.push_back(Finding{kind, list, index, std::move(text)});
  }

 private:
  IntegrityReport& report_;
  size_t max_;
};

// The packets of one kind come from one source, which keeps its own sequence count and clock;
// slots (empty, unknown) have neither.
bool is_stream(PacketKind kind) { return !packet_kind_info(kind).slot; }

struct StreamState {
  std::optional<int32_t> sequence;
  std::optional<int32_t> time;
};

void check_stream_entry(const Packet_Entry& e, CatalogueList list, int32_t index, PacketKind stream,
                        StreamState& state, const IntegrityOptions& options, ReportBuilder& out) {
  const std::string kind = packet_kind_info(stream).name;
  const int32_t sequence = ((e.Sequence_Count % kSequenceModulus) + kSequenceModulus) % kSequenceModulus;
  if (state.sequence) {
    const int32_t expected = (*state.sequence + 1) % kSequenceModulus;
    if (sequence == *state.sequence) {
      out.add(FindingKind::SequenceRepeat, list, index,
              "The " + kind + " sequence count " + std::to_string(sequence) + " comes twice");
    } else if (sequence == 0 && expected != 0) {
      // Each power-on of the instrument counts from 0 again: no packet was lost.
      out.add(FindingKind::Restart, list, index,
              "The " + kind + " sequence count starts again from 0 after " + std::to_string(*state.sequence));
    } else if (sequence != expected) {
      const int32_t missing = ((sequence - expected) % kSequenceModulus + kSequenceModulus) % kSequenceModulus;
      out.add(FindingKind::SequenceGap, list, index,
              "The " + kind + " sequence count " + std::to_string(sequence) + " follows " +
                  std::to_string(*state.sequence) + ": " + std::to_string(missing) +
                  (missing == 1 ? " packet" : " packets") + " missing");
    }
  }
  if (state.time) {
    const int64_t step = static_cast<int64_t>(e.Lander_Time) - *state.time;
    if (step < 0) {
      out.add(FindingKind::TimeBackwards, list, index,
              "The " + kind + " lander time goes back from " + std::to_string(*state.time) + " s to " +
                  std::to_string(e.Lander_Time) + " s");
    } else if (stream == PacketKind::Housekeeping && step > options.time_jump_seconds) {
      out.add(FindingKind::TimeJump, list, index,
              "The " + kind + " lander time jumps " + std::to_string(step) + " s, from " +
                  std::to_string(*state.time) + " s to " + std::to_string(e.Lander_Time) + " s");
    }
  }
  state.sequence = sequence;
  state.time = e.Lander_Time;
}

// The identifier word of an unknown slot, read without the file's shared caches.
int32_t slot_identifier(const Session& session, const Packet_Entry& e) {
  const TelemetryFile& file = session.telemetry();
  if (!is_binary(session.File_Type)) {
    int32_t identifier = 0;
    file.zeb().for_each_record(e.Packet_Frame, e.Packet_Frame,
                               [&](int32_t, const ZebRecord& items) { identifier = items[5]; });
    return identifier;
  }
  uint8_t bytes[2] = {0, 0};
  if (e.Packet_Position >= 1) file.bytes().read(static_cast<uint64_t>(e.Packet_Position - 1), bytes, 2);
  return session.Byte_Reverse ? bytes[1] * 256 + bytes[0] : bytes[0] * 256 + bytes[1];
}

void check_list(const Session& session, const EntryList& list, CatalogueList which,
                std::array<StreamState, kPacketKindCount>& streams, const IntegrityOptions& options,
                ReportBuilder& out,
                int64_t& checked, int64_t total) {
  const bool binary = is_binary(session.File_Type);
  const int64_t stride = frame_stride(session.File_Type);
  const int64_t file_size = static_cast<int64_t>(session.telemetry().bytes().size());
  for (int32_t i = 1; i <= list.size(); ++i) {
    if (options.progress && ++checked % kProgressEntries == 0) options.progress(checked, total);
    const Packet_Entry& e = list[i];
    const PacketKind stream = kind_of(e.Label);
    if (is_stream(stream)) {
      check_stream_entry(e, which, i, stream, streams[static_cast<size_t>(stream)], options, out);
      if (binary) {
        const int64_t frame_end = static_cast<int64_t>(e.Packet_Frame) * stride;  // 1-based last byte
        const int64_t packet_end = static_cast<int64_t>(e.Packet_Position) + e.Packet_Length - 1;
        if (packet_end > frame_end) {
          out.add(FindingKind::PastFrameEnd, which, i,
                  "The packet runs " + std::to_string(packet_end - frame_end) + " bytes past the end of frame " +
                      std::to_string(e.Packet_Frame));
        }
      }
      continue;
    }
    const bool first_slot = !binary || e.Packet_Position == (e.Packet_Frame - 1) * stride + 23;
    if (binary && (e.Packet_Frame - 1) * stride >= file_size) continue;  // reported once, below
    if (e.Label == LabelCode::Empty && first_slot) {
      out.add(FindingKind::EmptyFrame, which, i,
              std::string(binary ? "Frame " : "Record ") + std::to_string(e.Packet_Frame) + " holds no packets");
    } else if (e.Label == LabelCode::Unknown) {
      const int32_t identifier = slot_identifier(session, e);
      out.add(FindingKind::UnknownIdentifier, which, i,
              "Unknown identifier " + (binary ? "0x" + hex4(identifier) : std::to_string(identifier)) +
                  (binary ? " in frame " : " in record ") + std::to_string(e.Packet_Frame) +
                  ": the rest of it is skipped");
    }
  }
}

// The entry of the last frame the file holds some bytes of, for findings about the file's end.
int32_t first_information_entry_at_or_after(const EntryList& list, int64_t frame) {
  for (int32_t i = 1; i <= list.size(); ++i) {
    if (list[i].Packet_Frame >= frame) return i;
  }
  return list.size();
}

void check_file_end(const Session& session, ReportBuilder& out) {
  const EntryList& information = session.catalogue.Information_List;
  if (is_binary(session.File_Type)) {
    const int64_t stride = frame_stride(session.File_Type);
    const int64_t size = static_cast<int64_t>(session.telemetry().bytes().size());
    const int64_t whole = size / stride;
    if (size % stride != 0) {
      out.add(FindingKind::PartialFrame, CatalogueList::Information,
              first_information_entry_at_or_after(information, whole + 1),
              "The file ends inside frame " + std::to_string(whole + 1) + ", after " + std::to_string(size % stride) +
                  " of its " + std::to_string(stride) + " bytes");
    }
    const int64_t present = (size + stride - 1) / stride;
    if (session.Packet_Count > present) {
      out.add(FindingKind::PastEndOfFile, CatalogueList::Information,
              first_information_entry_at_or_after(information, present + 1),
              "Frames " + std::to_string(present + 1) + " to " + std::to_string(session.Packet_Count) +
                  " lie past the end of the file (the frame count is in 256-byte units): they read as zeros");
    }
  } else {
    const int64_t items = session.telemetry().zeb().item_count();
    if (items % kZebItemsPerRecord != 0) {
      out.add(FindingKind::PartialFrame, CatalogueList::Information, information.size(),
              "The file ends inside record " + std::to_string(items / kZebItemsPerRecord) + ", after " +
                  std::to_string(items % kZebItemsPerRecord) + " of its 136 items");
    }
  }
}

}  // namespace

IntegrityReport check_integrity(const Session& session, const IntegrityOptions& options) {
  IntegrityReport report;
  if (!session.loaded()) return report;
  ReportBuilder out(report, options.max_findings);
  std::array<StreamState, kPacketKindCount> streams{};
  const Catalogue& c = session.catalogue;
  int64_t checked = 0;
  const int64_t total = int64_t{c.HK_Count()} + c.Science_Count() + c.Information_Count();
  check_list(session, c.HK_List, CatalogueList::HK, streams, options, out, checked, total);
  check_list(session, c.Science_List, CatalogueList::Science, streams, options, out, checked, total);
  check_list(session, c.Information_List, CatalogueList::Information, streams, options, out, checked, total);
  check_file_end(session, out);
  return report;
}

}  // namespace morvane
