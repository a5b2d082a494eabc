// SPDX-License-Identifier: MIT
// The simulated instrument's short form tests, evaluated against the limit files written with
// its configuration: the healthy tests pass in both modes, in every format, and the faulty ones
// fail exactly in the items they were made to break.
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <tuple>
#include <utility>

#include "functest/short_message_load.h"
#include "functest/short_test_evaluation.h"
#include "sim/config_writer.h"
#include "sim/short_form_tests.h"
#include "sim/telemetry_writer.h"
#include "test_files.h"

namespace morvane {
namespace {

using ItemResult = std::pair<std::string, std::string>;  // the summary's name of its sub-system, the item

// Every item marked "Fail".
std::set<ItemResult> failing_items(const ShortTestEvaluation& test) {
  std::set<ItemResult> failing;
  auto add = [&](const char* sub_system, const std::string& item, const Cell& result) {
    if (result.text != kPass) failing.insert({sub_system, item});
  };
  for (const auto& row : test.sensors) add("Sensors", row.name, row.result);
  for (const auto& row : test.valves) add("Valves", row.name, row.result);
  for (const auto& row : test.injector_valves) add("Injector Valves", row.name, row.result);
  for (const auto& row : test.heaters) add("Heaters", row.name, row.result);
  for (const auto& row : test.large_reactors) add("Large Reactors", row.name, row.result);
  for (const auto& row : test.small_reactors) add("Small Reactors", row.name, row.result);
  for (const auto& row : test.l_valves) add("L-Valves", row.name, row.result);
  for (const auto& row : test.rails) add("Voltages and RF", row.name, row.result);
  return failing;
}

class SimulatedTests : public ::testing::TestWithParam<std::tuple<FileFormat, bool>> {};

TEST_P(SimulatedTests, EvaluateAsTheInstrumentWasMadeToBehave) {
  testing::TempDir dir;
  Session session;
  session.config = load_configuration(sim::write_configuration(dir.path("base")));
  const auto [format, byte_reverse] = GetParam();
  session.Byte_Reverse = byte_reverse;
  const std::string path = dir.path("t.dat");
  const sim::TelemetrySummary written = sim::write_telemetry(path, {.format = format, .byte_reverse = byte_reverse});
  load_telemetry(session, path, format);

  const auto& scripted = sim::scripted_tests();
  int evaluated = 0;
  for (const char* mode : {"Cruise Phase", "EAFT"}) {
    session.Test_Mode = mode;
    const ShortTestList list = find_short_tests(session);
    std::vector<const sim::WrittenTest*> expected;
    for (const auto& test : written.tests) {
      if (scripted[static_cast<size_t>(test.scripted)].mode == mode) expected.push_back(&test);
    }
    ASSERT_EQ(list.Test_Count(), static_cast<int32_t>(expected.size())) << mode;
    for (int32_t line = 1; line <= list.Test_Count(); ++line) {
      const sim::WrittenTest& written_test = *expected[static_cast<size_t>(line - 1)];
      const sim::ScriptedTest& script = scripted[static_cast<size_t>(written_test.scripted)];
      session.Current_Science_Index = science_index_of_line(list, line);
      const ShortTestEvaluation test = open_short_test(session);
      SCOPED_TRACE(std::string(mode) + " test " + std::to_string(line));
      EXPECT_EQ(test.start_label, start_label_text(written_test.lander_time));
      EXPECT_EQ(test.passed(), script.healthy);
      EXPECT_EQ(test.packet_message.text, script.packet_message);

      std::set<ItemResult> wanted;
      for (const auto& item : script.failing_items) wanted.emplace(item.sub_system, item.item);
      EXPECT_EQ(failing_items(test), wanted);

      std::set<std::string> failing_sub_systems;
      for (const auto& row : test.subsystems) {
        if (row.result.text != kPass) failing_sub_systems.insert(row.name);
      }
      std::set<std::string> wanted_sub_systems(script.failing_sub_systems.begin(), script.failing_sub_systems.end());
      EXPECT_EQ(failing_sub_systems, wanted_sub_systems);
      EXPECT_NEAR(std::stod(test.rf_frequency_text()), script.rf_frequency, 0.005);
      ++evaluated;
    }
  }
  EXPECT_EQ(evaluated, 4);
}

INSTANTIATE_TEST_SUITE_P(EveryFormat, SimulatedTests,
                         ::testing::Values(std::tuple{FileFormat::CSS, true}, std::tuple{FileFormat::QM, true},
                                           std::tuple{FileFormat::GRM, true}, std::tuple{FileFormat::FM, true},
                                           std::tuple{FileFormat::ZEB, true}, std::tuple{FileFormat::CSS, false}),
                         [](const auto& info) {
                           return std::string(format_tag(std::get<0>(info.param))) +
                                  (std::get<1>(info.param) ? "" : "_HighByteFirst");
                         });

}  // namespace
}  // namespace morvane
