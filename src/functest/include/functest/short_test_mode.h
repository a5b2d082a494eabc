// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace morvane {

// The two kinds of short form test. A test in mode "EAFT" is a shortened run: its final
// samples lie 12 readings earlier and its L-valves are switched in pairs.
enum class TestMode { CruisePhase, EAFT };

// The session's Test_Mode text to a mode. Any other text than "Cruise Phase" or "EAFT" is the
// run-time error "Invalid procedure call or argument" naming the text.
TestMode parse_test_mode(std::string_view text);
// "Cruise Phase" or "EAFT", as Test_Mode holds it and the limit files are named.
std::string_view test_mode_text(TestMode mode);

// The identifier a test's first reading carries: 23 in mode "Cruise Phase", 24 in mode "EAFT".
int first_reading_identifier(TestMode mode);
// The distance from a sensor's initial to its final sample: 218 or 206.
int final_offset(TestMode mode);

}  // namespace morvane
