// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "functest/short_test_evaluation.h"

namespace morvane::archive {

// One row of an evaluation as the archive keeps it: the table (the JSON key of functest --test),
// the name, the main display text, the verdict, and the other texts of the row where it has them.
struct StoredItem {
  std::string table;
  std::string name;
  std::string value;
  std::string result;
  bool failed = false;
  std::optional<std::string> rise_28v, rise_5v, initial, final, increase;
};

// Every row of every tab of the evaluation, tab by tab in the view's order. The main value is
// the final reading (sensors), the 28 V current rise (valves, injector valves, heaters,
// L-valves), the temperature increase (reactors, whose currents are not measured), the measured
// value (rails) or the verdict (sub-systems).
std::vector<StoredItem> evaluation_items(const ShortTestEvaluation& test);

}  // namespace morvane::archive
