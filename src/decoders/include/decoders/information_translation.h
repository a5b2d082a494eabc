// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "core/configuration.h"
#include "core/packet_entry.h"
#include "decoders/drawing.h"
#include "decoders/information_words.h"

namespace morvane {

// One of the five translation lines: its text and colour (empty and black when unused).
struct Translation_Line {
  std::string text;
  Colour colour = kBlack;
  bool operator==(const Translation_Line&) const = default;
};
using Translation = std::array<Translation_Line, 5>;  // Translation_Line 1..5 are [0]..[4]

// Event identifiers, memory types and patterns the translation knows.
inline constexpr int32_t kFirstEventId = 55001;
inline constexpr int32_t kEventIdSpan = 113;
inline constexpr int32_t kPowerOnPattern = 43520;  // 0xAA00
inline constexpr int kMemoryTypePROM = 150;
inline constexpr int kMemoryTypeEEPROM = 151;
inline constexpr int kMemoryTypeRAM = 152;

// Translate_Information: the five lines of a packet of the given class from its words. Memory
// dumps and checksum reports also append their tables to memory (see memory_layout.h); when a
// table runs beyond word 32 the error is thrown after the texts before it were appended. Labels
// without a translation (among them the acceptance class " Memory Checksum         ") give five
// empty lines.
Translation Translate_Information(const Configuration& config, LabelCode label, const InformationWords& words,
                                  Drawing& memory);

// The name of a telecommand type and sub-type, "" when the pair has none. Type 17 is named with
// sub-type 17 only.
std::string telecommand_name(int type, int sub_type);
// The name of operating mode 0..16 or 255, "" for any other number.
std::string operating_mode_name(int mode);

// The name of the sensor whose channel ID is sensor_id: the last matching row of the sensor
// table wins; "Unknown sensor" when none matches.
std::string Get_Sensor_Name(const Configuration& config, int32_t sensor_id);

// An ADC word of the sensor whose channel ID is sensor_id as "value unit" with three decimals.
// The last matching row's number is converted; no match converts row 255, which gives "0.000 ".
// Words above 32767 count as word - 65535 (not 65536, kept so): 0xFFFF reads 0 V.
std::string get_line_result(const Configuration& config, int32_t sensor_id, int32_t adc_word);

}  // namespace morvane
