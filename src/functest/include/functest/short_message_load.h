// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/session.h"
#include "functest/short_test_mode.h"

namespace morvane {

// The test selection list: every science packet that starts a short form test, as the list
// box shows it, and the two message lines under it.
struct ShortTestList {
  std::vector<int32_t> Test_Index;  // Science_List index of test t at Test_Index[t - 1]
  std::vector<std::string> lines;   // one list line per test, in the same order
  std::string Label1;               // how many tests were found
  std::string Label2;               // what the user can do

  int32_t Test_Count() const { return static_cast<int32_t>(Test_Index.size()); }
};

// Column headings above the list (Label3, Label4); the list is drawn in a fixed-pitch font.
inline constexpr const char* kTestListSequenceHeading = "Seq. Count";
inline constexpr const char* kTestListTimeHeading = "Lander time (s)";
inline constexpr const char* kTestListCancelCaption = "Cancel";

// Finds the tests of the loaded file in the session's Test_Mode (an unknown mode is a
// RuntimeError). With no file loaded the list is empty and the labels say so.
ShortTestList find_short_tests(const Session& session);
ShortTestList find_short_tests(const Session& session, TestMode mode);

// Whether science entry k starts a test: it and every entry up to seven after it whose sequence
// count is within the test's eight are auxiliary packets, and its words carry 29 readings with
// the mode's first identifier, 64 eighth, 0 twenty-seventh and 144 last.
bool Is_Test(const Session& session, TestMode mode, int32_t k);

// The list line of test n starting at sequence count s and lander time t: n left in 6
// columns, "Short form test", s right-aligned in 9 and t in 15. A number wider than its
// column is "Invalid procedure call or argument".
std::string short_test_line(int32_t n, int32_t sequence_count, int32_t lander_time);

// Label1 and Label2 for a number of tests found.
std::string short_test_count_label(int32_t test_count);
std::string short_test_hint_label(int32_t test_count);

// The Science_List index of the test on list line `line` (1-based, the double-clicked row + 1):
// the Current_Science_Index the evaluation starts from. Outside the list is "Subscript out of
// range".
int32_t science_index_of_line(const ShortTestList& list, int32_t line);

}  // namespace morvane
