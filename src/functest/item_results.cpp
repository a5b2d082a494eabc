// SPDX-License-Identifier: MIT
// The valve, injector valve, heater, reactor and L-valve tabs. The instrument switches the items
// on one after another while it samples its supply currents (and a temperature for heated
// items); each item's samples follow the previous item's, its "after" currents being the next
// item's "before" currents.
#include "result_routines.h"

namespace morvane::result_routines {

namespace {

// Where an item's samples lie. A current is the mean of two samples; a single sample is given
// twice. A temperature index of 0 means the item has no temperature.
struct ItemSamples {
  int base_5v[2];
  int base_28v[2];
  int on_5v[2];
  int on_28v[2];
  int initial = 0;
  int final = 0;
  bool halved = false;  // an EAFT L-valve of a pair, credited half the shared rise
};

enum class Checks { Currents, Temperature, All };

double mean(const ShortTestEvaluation& test, const int (&samples)[2]) {
  return (test.Eng_Value[static_cast<size_t>(samples[0])] + test.Eng_Value[static_cast<size_t>(samples[1])]) / 2;
}

// The stride of a heater (and of a Cruise Phase L-valve) starting at sample s: 5 V and 28 V
// base, initial temperature, two pairs of 5 V and 28 V samples while on, final temperature.
ItemSamples heated_stride(int s) {
  return ItemSamples{{s, s + 8}, {s + 1, s + 9}, {s + 3, s + 5}, {s + 4, s + 6}, s + 2, s + 7, false};
}

ItemRow evaluate_item(const ShortTestEvaluation& test, const char* name, const ItemSamples& at,
                       const RangeRecord& limits, int record, Checks checks) {
  ItemRow row;
  row.name = name;
  row.record = record;
  row.limits = limits;
  bool pass = true;
  if (checks != Checks::Temperature) {
    row.Rise_5V = mean(test, at.on_5v) - mean(test, at.base_5v);
    row.Rise_28V = mean(test, at.on_28v) - mean(test, at.base_28v);
    if (at.halved) {
      row.Rise_5V /= 2;
      row.Rise_28V /= 2;
    }
    row.rise_28v = value_cell(row.Rise_28V, "0.0");
    row.rise_5v = value_cell(row.Rise_5V, "0.0");
    pass = limits.pair(1).holds(row.Rise_5V) && limits.pair(2).holds(row.Rise_28V);
    row.checked[0] = row.checked[1] = true;
  } else {
    row.rise_28v = row.rise_5v = Cell{kNotMeasured, false};
  }
  if (checks != Checks::Currents) {
    const double initial = test.Eng_Value[static_cast<size_t>(at.initial)];
    const double final = test.Eng_Value[static_cast<size_t>(at.final)];
    row.Temp_Rise = final - initial;
    row.initial = value_cell(initial, "0.0");
    row.final = value_cell(final, "0.0");
    row.increase = value_cell(row.Temp_Rise, "0.0");
    if (!limits.pair(3).holds(row.Temp_Rise)) pass = false;
    row.checked[2] = true;
  }
  row.result = result_cell(pass);
  return row;
}

constexpr const char* kValveNames[12] = {"V 1", "V 2", "V 3",  "V 4",  "V 7",  "V 8",
                                         "V 9", "V 10", "V 11", "V 13", "V 15", "V 16"};
constexpr const char* kHeaterNames[6] = {"Manifold 1", "Manifold 2", "GC heater", "Ion Trap", "Transfer Pipe",
                                         "Reactor 8"};
constexpr const char* kLargeReactorNames[5] = {"Reactor 1", "Reactor 2", "Reactor 4", "Reactor 5", "Reactor 6"};
constexpr const char* kSmallReactorNames[5] = {"Reactor 7", "Reactor 9", "Reactor 13", "Reactor 14", "Reactor 15"};
constexpr const char* kLValveNames[5] = {"L-Valve 1", "L-Valve 2", "L-Valve 5", "L-Valve 6", "L-Valve 7"};

constexpr int kValveRecord = 37;
constexpr int kInjectorValveRecord = 38;

}  // namespace

void Display_Valve_Results(ShortTestEvaluation& test, const TestRanges& ranges) {
  test.valves.clear();
  for (int n = 1; n <= 12; ++n) {
    const int s = 7 * n + 18;  // sample s + 2 lies between the bases and the on samples, unread
    const ItemSamples at{{s, s + 7}, {s + 1, s + 8}, {s + 3, s + 5}, {s + 4, s + 6}};
    test.valves.push_back(
        evaluate_item(test, kValveNames[n - 1], at, ranges.record(kValveRecord), kValveRecord, Checks::Currents));
  }
}

void Display_InjectorValve_Results(ShortTestEvaluation& test, const TestRanges& ranges) {
  test.injector_valves.clear();
  for (int n = 1; n <= 3; ++n) {
    const int s = 4 * n + 9;
    const ItemSamples at{{s, s + 4}, {s + 1, s + 5}, {s + 2, s + 2}, {s + 3, s + 3}};
    test.injector_valves.push_back(evaluate_item(test, kInjectorValveNames[static_cast<size_t>(n - 1)], at,
                                                 ranges.record(kInjectorValveRecord), kInjectorValveRecord,
                                                 Checks::Currents));
  }
}

void Display_Heater_Results(ShortTestEvaluation& test, const TestRanges& ranges) {
  test.heaters.clear();
  for (int n = 1; n <= 6; ++n) {
    test.heaters.push_back(
        evaluate_item(test, kHeaterNames[n - 1], heated_stride(8 * n + 101), ranges.record(n + 10), n + 10, Checks::All));
  }
}

void Display_Large_Reactor_Results(ShortTestEvaluation& test, const TestRanges& ranges) {
  test.large_reactors.clear();
  for (int n = 1; n <= 5; ++n) {
    ItemSamples at{};
    at.initial = n + 158;
    at.final = n + 163;
    test.large_reactors.push_back(
        evaluate_item(test, kLargeReactorNames[n - 1], at, ranges.record(n + 16), n + 16, Checks::Temperature));
  }
}

void Display_Small_Reactor_Results(ShortTestEvaluation& test, const TestRanges& ranges) {
  test.small_reactors.clear();
  for (int n = 1; n <= 5; ++n) {
    ItemSamples at{};
    at.initial = n + 168;
    at.final = n + 173;
    test.small_reactors.push_back(
        evaluate_item(test, kSmallReactorNames[n - 1], at, ranges.record(n + 21), n + 21, Checks::Temperature));
  }
}

// L-valve 5's after-samples, 219 and 220, are also the final samples of sensor rows 1 and 2.
void Display_Cruise_L_Valve_Results(ShortTestEvaluation& test, const TestRanges& ranges) {
  test.l_valves.clear();
  for (int n = 1; n <= 5; ++n) {
    test.l_valves.push_back(
        evaluate_item(test, kLValveNames[n - 1], heated_stride(8 * n + 171), ranges.record(n + 26), n + 26, Checks::All));
  }
}

// In the shortened test L-valves 1 and 2 are switched together, as are 3 and 4; each valve of a
// pair is credited half the shared current rise. L-valve 5 is switched alone.
void Display_Limited_Cruise_L_Valve_Results(ShortTestEvaluation& test, const TestRanges& ranges) {
  static constexpr ItemSamples kPositions[5] = {
      {{179, 189}, {180, 190}, {183, 185}, {184, 186}, 181, 187, true},
      {{179, 189}, {180, 190}, {183, 185}, {184, 186}, 182, 188, true},
      {{189, 199}, {190, 200}, {193, 195}, {194, 196}, 191, 197, true},
      {{189, 199}, {190, 200}, {193, 195}, {194, 196}, 192, 198, true},
      {{199, 199}, {200, 200}, {202, 204}, {203, 205}, 201, 206, false},
  };
  test.l_valves.clear();
  for (int n = 1; n <= 5; ++n) {
    test.l_valves.push_back(evaluate_item(test, kLValveNames[n - 1], kPositions[n - 1], ranges.record(n + 26), n + 26,
                                          Checks::All));
  }
}

}  // namespace morvane::result_routines
