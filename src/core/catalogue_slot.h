// SPDX-License-Identifier: MIT
#pragma once

#include "core/packet_entry.h"

namespace morvane {

// An empty or unknown slot has no header to read: its length, sequence count and lander time
// are entered as -1.
inline void clear_slot_header(Packet_Entry& entry) {
  entry.Packet_Length = -1;
  entry.Sequence_Count = -1;
  entry.Lander_Time = -1;
}

}  // namespace morvane
