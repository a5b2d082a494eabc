// SPDX-License-Identifier: MIT
// The result routines of the evaluation view, run in this order by the two drivers. Each fills
// its tab's rows of the evaluation from Eng_Value and the limits.
#pragma once

#include "core/number_text.h"
#include "functest/short_test_evaluation.h"
#include "functest/short_test_ranges.h"

namespace morvane::result_routines {

// A failed row's result cell: red "Fail". A passing row keeps the designed "Pass".
inline Cell result_cell(bool pass) { return pass ? Cell{kPass, false} : Cell{kFail, true}; }
inline Cell value_cell(double value, const char* pattern) { return Cell{format_pattern(value, pattern), false}; }

// The "Sensors" tab with the final samples 218 (Cruise Phase) or 206 (EAFT) readings on.
void Display_Sensor_Results(ShortTestEvaluation& test, const TestRanges& ranges, int offset);
inline void Display_Cruise_Sensor_Results(ShortTestEvaluation& test, const TestRanges& ranges) {
  Display_Sensor_Results(test, ranges, final_offset(TestMode::CruisePhase));
}
inline void Display_Limited_Cruise_Sensor_Results(ShortTestEvaluation& test, const TestRanges& ranges) {
  Display_Sensor_Results(test, ranges, final_offset(TestMode::EAFT));
}
void Display_Valve_Results(ShortTestEvaluation& test, const TestRanges& ranges);
void Display_InjectorValve_Results(ShortTestEvaluation& test, const TestRanges& ranges);
void Display_Heater_Results(ShortTestEvaluation& test, const TestRanges& ranges);
void Display_Large_Reactor_Results(ShortTestEvaluation& test, const TestRanges& ranges);
void Display_Small_Reactor_Results(ShortTestEvaluation& test, const TestRanges& ranges);
void Display_Cruise_L_Valve_Results(ShortTestEvaluation& test, const TestRanges& ranges);
void Display_Limited_Cruise_L_Valve_Results(ShortTestEvaluation& test, const TestRanges& ranges);
// The summary of both modes; the modes differ only in the offset of the final rail samples.
void Display_Summary_Results(ShortTestEvaluation& test, const TestRanges& ranges, int offset);
inline void Display_Cruise_Summary_Results(ShortTestEvaluation& test, const TestRanges& ranges) {
  Display_Summary_Results(test, ranges, final_offset(TestMode::CruisePhase));
}
inline void Display_Limited_Cruise_Summary_Results(ShortTestEvaluation& test, const TestRanges& ranges) {
  Display_Summary_Results(test, ranges, final_offset(TestMode::EAFT));
}

}  // namespace morvane::result_routines
