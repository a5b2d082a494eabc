// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/session.h"

namespace morvane {

// The operating mode and the line of the mode's sequence that a housekeeping packet reports.
struct ModeData {
  uint8_t Mode_Number = 0;
  int16_t Line_Number = 0;
  std::string Mode_Name;
};

// The name of an operating mode ("Standby", ..., "Safe" for 255); "Unknown" for any other number.
std::string_view mode_name(int mode);

// The line number from its two bytes, in 16-bit arithmetic: a high byte above 128 is clamped
// to 127, but 128 itself is not and overflows the product (the run-time "Overflow", kept).
int16_t line_number(uint8_t high, uint8_t low);

// Reads the mode (packet byte 18) and the line (bytes 20 high, 21 low) of housekeeping entry
// `index`; a byte-reversed file swaps 18/19 and 20/21. Binary files only: ZEB records are never
// asked for their mode. Throws "Overflow" for a line high byte of 128 and "Subscript out of
// range" for an entry outside the list.
ModeData Load_Mode_Data(const Session& session, int32_t index);

}  // namespace morvane
