// SPDX-License-Identifier: MIT
#include "decoders/hk_mode.h"

#include <cstdint>
#include <iterator>

#include "core/error.h"

namespace morvane {

std::string_view mode_name(int mode) {
  static constexpr std::string_view kNames[] = {
      "Standby",           "Ground Test",          "Post Launch",    "Cruise Phase",
      "Instrument Checkout", "HTO Conditioning",   "MTO Conditioning", "CASE Conditioning",
      "Survival Evaluation", "Helium Tank Rupture", "Dynamic Pre-operations", "Calibration",
      "Ice Core Analysis(HTO)", "Atmosphere Analysis", "Silicate Analysis", "Ice Core Analysis(MTO)",
      "Additional Science"};
  if (mode >= 0 && mode < static_cast<int>(std::size(kNames))) return kNames[mode];
  return mode == 255 ? "Safe" : "Unknown";
}

int16_t line_number(uint8_t high, uint8_t low) {
  const int32_t clamped = high > 128 ? 127 : high;
  const int32_t product = clamped * 256;
  if (product > INT16_MAX) raise(ErrorNumber::Overflow, "the line number's high byte is 128");
  return static_cast<int16_t>(product + low);
}

ModeData Load_Mode_Data(const Session& session, int32_t index) {
  const Packet_Entry& entry = session.catalogue.HK_List.at(index);
  const TelemetryFile& file = session.telemetry();
  // packet_byte swaps the offset within its word in a byte-reversed file: 18 reads 19, 20 reads 21.
  ModeData mode;
  mode.Mode_Number = file.packet_byte(entry, 18, session.Byte_Reverse);
  mode.Line_Number = line_number(file.packet_byte(entry, 20, session.Byte_Reverse),
                                 file.packet_byte(entry, 21, session.Byte_Reverse));
  mode.Mode_Name = mode_name(mode.Mode_Number);
  return mode;
}

}  // namespace morvane
