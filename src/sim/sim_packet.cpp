// SPDX-License-Identifier: MIT
#include "sim_packet.h"

namespace morvane::sim {

SimPacket start_packet(LabelCode label, int flags, int sequence, int length, int32_t lander_time, int subsecond) {
  SimPacket p;
  p.length = length;
  p.label = label;
  p.lander_time = lander_time;
  p.put_word(0, identifier_of(kind_of(label), FormatFamily::Frames282));
  p.put_word(2, (flags << 14) | (sequence & 0x3FFF));
  p.put_word(4, length - 7);
  p.put_word(6, (lander_time >> 16) & 0xFFFF);
  p.put_word(8, lander_time & 0xFFFF);
  p.put_word(10, subsecond & 0xFFFF);
  return p;
}

}  // namespace morvane::sim
