// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "core/session.h"

namespace morvane {

// The concise view of one frame: the type of each source packet in it, up to eight.
inline constexpr int kConciseSlots = 8;
using ConciseSlots = std::array<std::string, kConciseSlots>;

// The slot text of a packet by its identifier word and, where they decide, its class word
// (offset 14) and sub-type word (offset 16). Class 10 names a memory checksum for progress
// events only in 282-byte frames and for acceptance reports only in 280-byte frames.
std::string concise_slot_text(int32_t identifier, int32_t class_word, int32_t sub_type_word, bool frame_282);

// The eight slot texts of frame `frame`, "" where the walk ended before the slot. The walk
// starts at frame offset 23 and moves by each packet's length + 7; an empty packet does not
// end it, only an offset past 250 or the eighth slot does. ZEB files give eight empty slots.
// A frame that starts past the end of the file is "Input past end of file"; a frame below 1
// "Invalid procedure call or argument"; no loaded file "Bad file name or number".
ConciseSlots Show_Lander_Packet(const Session& session, int32_t frame);

}  // namespace morvane
