// SPDX-License-Identifier: MIT
#include "decoders/concise_frame.h"

#include "core/error.h"

namespace morvane {

namespace {

constexpr int32_t kFirstOffset = 23;
constexpr int32_t kLastOffset = 250;

// The class of an event: the class word / 256 when that division is exact, else no class.
int32_t exact_class(int32_t class_word) { return class_word % 256 == 0 ? class_word / 256 : -1; }

}  // namespace

std::string concise_slot_text(int32_t identifier, int32_t class_word, int32_t sub_type_word, bool frame_282) {
  switch (identifier) {
    case 3892:
      switch (sub_type_word) {
        case 1: return " Concise HK ";
        case 2: return " Complete HK";
        default: return " Unknown  ";
      }
    case 3895:
      switch (exact_class(class_word)) {
        case 1: return " Normal Progress Event   ";
        case 2: return " Warning Anomalous Event ";
        case 10: if (frame_282) return " NPE - Memory Checksum   "; break;
        default: break;
      }
      return " Unknown - progress event";
    case 3889:
      switch (exact_class(class_word)) {
        case 1: return " Acceptance Success      ";
        case 2: return " Acceptance Failure      ";
        case 10: if (!frame_282) return " NPE - Memory Checksum   "; break;
        default: break;
      }
      return " Unknown - acceptance    ";
    case 3897: return " Memory Dump ";
    case 3900:
      switch (sub_type_word) {
        case 1: return " Auxiliary Data   ";
        case 2: return " GC spectrum      ";
        case 3: return " Isotope spectrum ";
        default: return " Unknown          ";
      }
    case 0: return " Empty ";
    default: return " Unknown ";
  }
}

ConciseSlots Show_Lander_Packet(const Session& session, int32_t frame) {
  ConciseSlots slots{};
  if (!is_binary(session.File_Type)) return slots;
  if (frame < 1) raise(ErrorNumber::InvalidProcedureCall, "frame " + std::to_string(frame));
  const TelemetryFile& file = session.telemetry();
  const int32_t size = frame_stride(session.File_Type);
  const int64_t start = static_cast<int64_t>(frame - 1) * size;  // 0-based
  if (static_cast<uint64_t>(start) >= file.bytes().size()) {
    raise(ErrorNumber::InputPastEndOfFile,
          session.File_Name + " (frame " + std::to_string(frame) + " starts past the end of the file)");
  }
  const bool reverse = session.Byte_Reverse;
  int32_t o = kFirstOffset;
  int k = 0;
  do {
    const int64_t p = start + o;  // 1-based position of the packet's first byte
    const int32_t identifier = file.Get_Word(p, reverse);
    const int32_t length_field = file.Get_Word(p + 4, reverse);
    // Sequence word, time and the word at +10 are read by the walk but not shown.
    slots[static_cast<size_t>(k)] = concise_slot_text(identifier, file.Get_Word(p + 14, reverse),
                                                      file.Get_Word(p + 16, reverse), size == 282);
    ++k;
    o += length_field + 7;
  } while (o <= kLastOffset && k < kConciseSlots);
  return slots;
}

}  // namespace morvane
