// SPDX-License-Identifier: MIT
// Packing the instrument's packets the way the lander relays them: into frames of 282 or 280
// bytes, or into the ZEB ground system's text records. The link adds what real downlinks add:
// now and then a frame with nothing in it, now and then a packet whose identifier was corrupted.
#include <algorithm>
#include <charconv>
#include <cstring>
#include <optional>

#include "core/file_format.h"
#include "random.h"
#include "sim/telemetry_writer.h"
#include "simulated_instrument.h"

namespace morvane::sim {

namespace {

constexpr int kFirstPacketOffset = 22;  // frame bytes 0..21 are the frame header
constexpr int kLastPacketStart = 249;   // no packet starts later in a frame
constexpr double kIdleFrameChance = 1.0 / 400;
constexpr double kCorruptionChance = 1.0 / 900;
// One bit away from housekeeping, known to no table.
constexpr int kCorruptedIdentifier = identifier_of(PacketKind::Housekeeping, FormatFamily::Frames282) ^ 1;
static_assert(kind_of_identifier(kCorruptedIdentifier, FormatFamily::Frames282) == PacketKind::Unknown);

void append_item(std::string& line, int32_t value, bool last) {
  char text[16];
  const auto end = std::to_chars(text, text + sizeof text, value).ptr;
  line.append(text, end);
  line += last ? "\r\n" : ", ";
}

}  // namespace

struct TelemetryStream::State {
  explicit State(const TelemetryOptions& o) : options(o), instrument(o.seed), link(stream_seed(o.seed, 2)) {
    summary.format = o.format;
  }

  // The next packet that reaches the ground.
  SimPacket take() {
    if (held) {
      SimPacket p = *held;
      held.reset();
      return p;
    }
    for (;;) {
      SimPacket p = instrument.next();
      if (!p.lost) return p;
    }
  }

  // Counts a packet written into frame (record) number frame.
  void note(const SimPacket& p, int32_t frame) {
    ++summary.labels[static_cast<size_t>(label_in_family(p.label, format_family(options.format)))];
    if (p.test >= 0 && p.test_packet == 1) {
      summary.tests.push_back({instrument.scripted_test_of_run(p.test), p.sequence_count(), p.lander_time, frame});
    }
    if (p.label != LabelCode::IsotopeSpectrum) return;
    const int flags = p.segment_flags();
    summary.spectrum_starts += (flags & 2) != 0;
    summary.spectrum_ends += (flags & 1) != 0;
    if (p.spectrum < 0 || p.spectrum >= options.spectra_kept) return;
    if (flags & 2) summary.spectra.push_back({p.sequence_count(), p.lander_time, frame, 0, p.word(28), {}});
    if (summary.spectra.empty()) return;  // a file that starts inside a spectrum
    WrittenSpectrum& s = summary.spectra.back();
    ++s.sub_packets;
    for (int j = 0; j < p.word(30); ++j) s.bin_words.push_back(static_cast<uint16_t>(p.word(32 + 2 * j)));
  }

  void frame_header(std::vector<uint8_t>& frame, int32_t number) {
    const uint8_t header[12] = {0x1A,
                                0xCF,
                                0xFC,
                                0x1D,  // synchronisation marker
                                static_cast<uint8_t>(number >> 24),
                                static_cast<uint8_t>(number >> 16),
                                static_cast<uint8_t>(number >> 8),
                                static_cast<uint8_t>(number),
                                0x4D,
                                0x56,
                                0x00,
                                0x03};  // lander, virtual channel
    std::memcpy(frame.data(), header, sizeof header);
  }

  void next_frame(std::vector<uint8_t>& frame) {
    const int stride = frame_stride(options.format);
    frame.assign(static_cast<size_t>(stride), 0);
    const auto number = static_cast<int32_t>(++summary.frames);
    frame_header(frame, number);
    if (link.chance(kIdleFrameChance)) {
      ++summary.labels[static_cast<size_t>(LabelCode::Empty)];
    } else {
      int offset = kFirstPacketOffset;
      for (;;) {
        SimPacket p = take();
        if (offset > kLastPacketStart || offset + p.length > stride) {
          held = p;
          break;
        }
        std::memcpy(frame.data() + offset, p.bytes.data(), static_cast<size_t>(p.length));
        if (p.label == LabelCode::Concise && link.chance(kCorruptionChance)) {
          // The catalogue stops at an identifier it does not know: nothing more goes in.
          frame[static_cast<size_t>(offset)] = kCorruptedIdentifier >> 8;
          frame[static_cast<size_t>(offset) + 1] = kCorruptedIdentifier & 0xFF;
          ++summary.labels[static_cast<size_t>(LabelCode::Unknown)];
          offset = stride;
          break;
        }
        note(p, number);
        offset += p.length;
      }
      if (offset <= kLastPacketStart) ++summary.labels[static_cast<size_t>(LabelCode::Empty)];
    }
    if (options.byte_reverse) {
      for (size_t i = 0; i + 1 < frame.size(); i += 2) std::swap(frame[i], frame[i + 1]);
    }
  }

  void next_record(std::string& line) {
    const auto number = static_cast<int32_t>(++summary.frames);
    std::array<int32_t, 137> item{};
    item[1] = number;
    if (link.chance(kIdleFrameChance)) {
      ++summary.labels[static_cast<size_t>(LabelCode::Empty)];
    } else {
      const SimPacket p = take();
      // Items 9..136 are the packet's words, high byte first, written signed.
      for (int k = 0; k < 128; ++k) item[static_cast<size_t>(9 + k)] = static_cast<int16_t>(p.word(2 * k));
      item[5] = identifier_of(p.kind(), FormatFamily::Zeb);
      item[6] = p.segment_flags();
      item[7] = p.sequence_count();
      item[8] = p.length_field();
      item[9] = p.lander_time;
      if (packet_kind_info(p.kind()).selector == Selector::EventClass) item[15] = p.event_class;
      if (p.label == LabelCode::Concise && link.chance(kCorruptionChance)) {
        item[5] = kCorruptedIdentifier & 0x7FF;
        ++summary.labels[static_cast<size_t>(LabelCode::Unknown)];
      } else {
        note(p, number);
      }
    }
    line.clear();
    for (size_t i = 1; i <= 136; ++i) append_item(line, item[i], i == 136);
  }

  TelemetryOptions options;
  SimulatedInstrument instrument;
  Random link;
  std::optional<SimPacket> held;
  TelemetrySummary summary;
};

TelemetryStream::TelemetryStream(const TelemetryOptions& options) : state_(std::make_unique<State>(options)) {}
TelemetryStream::~TelemetryStream() = default;

void TelemetryStream::next_frame(std::vector<uint8_t>& frame) { state_->next_frame(frame); }
void TelemetryStream::next_record(std::string& line) { state_->next_record(line); }
const TelemetrySummary& TelemetryStream::summary() const { return state_->summary; }

int32_t TelemetryStream::next_lander_time() {
  if (!state_->held) state_->held = state_->take();
  return state_->held->lander_time;
}

std::string TelemetryStream::zeb_header() const {
  // Items per record, format version, the lander time of the first power-on (high, low).
  std::string line;
  std::array<int32_t, 137> item{};
  item[1] = 136;
  item[2] = 1;
  item[3] = SimulatedInstrument::kStartTime / 65536;
  item[4] = SimulatedInstrument::kStartTime % 65536;
  for (size_t i = 1; i <= 136; ++i) append_item(line, item[i], i == 136);
  return line;
}

}  // namespace morvane::sim
