// SPDX-License-Identifier: MIT
// The evaluation of one test from its readings: conversions, every tab, the summary.
#include "functest/short_test_evaluation.h"

#include <gtest/gtest.h>

#include <map>

#include "short_test_files.h"

namespace morvane {
namespace {

constexpr int kIdentity = 31;  // a sensor whose value is its voltage

// All eight packets found, every reading of the identity sensor with the given values (0 elsewhere).
TestReadings values(const std::map<int, double>& at) {
  TestReadings r{.RF_Frequency = 400, .RF_Found = true};
  for (size_t k = 1; k <= kTestReadings; ++k) r.Sensor_ID[k] = kIdentity;
  for (const auto& [k, v] : at) r.Voltage[static_cast<size_t>(k)] = v;
  return r;
}

TestPackets all_found() {
  TestPackets p{.Start_Sequence = 10, .Start_Time = 1234};
  for (int n = 1; n <= kTestPackets; ++n) p.Packet_Index[static_cast<size_t>(n)] = n;
  return p;
}

class Evaluation : public ::testing::Test {
 protected:
  ShortTestEvaluation evaluate(const TestReadings& readings, TestMode mode = TestMode::CruisePhase) const {
    return evaluate_short_test(config, mode, packets, readings, TestRanges{"crafted", limits});
  }
  void limit(int record, int pair, double min, double max) {
    limits[static_cast<size_t>(record - 1)].pairs[static_cast<size_t>(pair - 1)] = {min, max};
  }
  Configuration config = testing::test_configuration();
  TestPackets packets = all_found();
  std::array<RangeRecord, 38> limits = testing::uniform_limits(-1000, 1000);
};

// Without an RF frequency the rails, their sub-system and the test fail.
TEST_F(Evaluation, AHealthyTestLeavesEveryDesignedCaptionAndColourAndNoRfFrequencyFailsIt) {
  const ShortTestEvaluation test = evaluate(values({}));
  EXPECT_EQ(test.start_label, "Test started at Lander time 1234 seconds");
  EXPECT_EQ(test.mode_title, "Cruise Phase Mode");
  EXPECT_EQ(test.overall, (Cell{"Passed", false}));
  EXPECT_EQ(test.packet_message, (Cell{"All 8 Science data packets were collected.", false}));
  EXPECT_EQ(test.rf_frequency_text(), "400.00");
  EXPECT_TRUE(test.passed());

  TestReadings r = values({});
  r.RF_Found = false;
  r.RF_Frequency = 0;
  const ShortTestEvaluation no_rf = evaluate(r);
  EXPECT_EQ(no_rf.rails[4].value, (Cell{"n.m.", false}));
  EXPECT_EQ(no_rf.rails[4].result, (Cell{"Fail", true}));
  EXPECT_EQ(no_rf.rf_frequency_text(), "n.m.");
  EXPECT_EQ(no_rf.subsystems[7], (SubsystemRow{"Voltages and RF", Cell{"Fail", true}}));
  EXPECT_EQ(no_rf.overall, (Cell{"Fail", true}));
}

// Both readings of a sensor must lie within its limits, inclusive; the AD590 (row 6) may instead
// drift up to twenty degrees.
TEST_F(Evaluation, SensorLimitsAreInclusiveAndTheAd590MayDriftTwentyDegrees) {
  limit(4, 3, -2, 3);
  const std::tuple<int, double, double, bool> cases[] = {
      {4, -2, 3, true},      {4, 3, -2, true},       {4, -2.001, 0, false}, {4, 0, 3.001, false},
      {4, 3.001, 0, false},  {4, 0, -2.001, false},  {6, 21.0, 41.0, true}, {6, 21.0, 41.01, false},
      {6, 41.0, 21.0, true}};
  for (const auto& [row, initial, final, pass] : cases) {
    const ShortTestEvaluation test = evaluate(values({{row, initial}, {row + 218, final}}));
    EXPECT_EQ(test.sensors[static_cast<size_t>(row - 1)].result, pass ? (Cell{"Pass", false}) : (Cell{"Fail", true}))
        << row << ": " << initial << " " << final;
  }
  EXPECT_EQ(evaluate(values({})).sensors[3].limits, (LimitPair{-2, 3}));
}

TEST_F(Evaluation, TheReferenceTemperatureComesFromTheAd590ReadingsPresent) {
  // Sensor 28 reads V x 100 - 273 degrees C; the crafted N-type table is 40 uV a degree.
  const std::tuple<bool, bool, double> cases[] = {
      {true, true, 35.0}, {true, false, 25.0}, {false, true, 45.0}, {false, false, 0.0}};
  for (const TestMode mode : {TestMode::CruisePhase, TestMode::EAFT}) {
    const int e = 6 + final_offset(mode);
    for (const auto& [initial, final, reference] : cases) {
      TestReadings r = values({{6, 2.98}, {e, 3.18}, {40, 0.0}});
      r.Sensor_ID[6] = initial ? 28 : kIdentity;
      r.Sensor_ID[static_cast<size_t>(e)] = final ? 28 : kIdentity;
      r.Sensor_ID[40] = 1;  // a thermocouple at 0 V reads the reference temperature
      const ShortTestEvaluation test = evaluate(r, mode);
      EXPECT_NEAR(test.Reference_Temperature, reference, 1e-9);
      EXPECT_NEAR(test.Cold_Junction, reference * 40, 1e-6);
      EXPECT_NEAR(test.Eng_Value[40], reference, 1e-6);
      EXPECT_EQ(test.Eng_Unit[40], "oC");
    }
  }
}

TEST_F(Evaluation, EaftLValvePairsAreCreditedHalfTheirRise) {
  // L-valves 1 and 2: bases 179/189 and 180/190, on 183/185 and 184/186. L-valve 5: bases 199
  // and 200 alone, on 202/204 and 203/205.
  const std::map<int, double> at{{179, 10}, {189, 10}, {180, 20}, {190, 20}, {183, 14}, {185, 14}, {184, 26},
                                 {186, 26}, {181, 30}, {187, 45}, {182, 31}, {188, 41}, {199, 5},  {200, 8},
                                 {202, 9},  {204, 9},  {203, 16}, {205, 16}, {201, 50}, {206, 75}};
  const ShortTestEvaluation test = evaluate(values(at), TestMode::EAFT);
  EXPECT_EQ(test.l_valves[0].rise_5v.text, "2.0");
  EXPECT_EQ(test.l_valves[0].rise_28v.text, "3.0");
  EXPECT_EQ(test.l_valves[0].increase.text, "15.0");
  EXPECT_EQ(test.l_valves[1].rise_5v.text, "2.0");
  EXPECT_EQ(test.l_valves[1].increase.text, "10.0");
  EXPECT_EQ(test.l_valves[2].rise_5v.text, "-3.8");  // L-valves 3 and 4: half of 0 - (10 + 5) / 2
  EXPECT_EQ(test.l_valves[4].rise_5v.text, "4.0");
  EXPECT_EQ(test.l_valves[4].rise_28v.text, "8.0");
  EXPECT_EQ(test.l_valves[4].increase.text, "25.0");

  limit(27, 1, 1.9, 2.1);
  EXPECT_EQ(evaluate(values(at), TestMode::EAFT).l_valves[0].result.text, "Pass");
  EXPECT_EQ(evaluate(values(at), TestMode::CruisePhase).l_valves[0].result.text, "Fail");
}

TEST_F(Evaluation, MissingPacketsAreNamedInAscendingOrderInRed) {
  packets.Packet_Index[6] = 0;
  packets.Packet_Index[3] = 0;
  EXPECT_EQ(evaluate(values({})).packet_message,
            (Cell{"There were 2 missing science data packets (pkt nos. 3 and 6)", true}));
  const std::pair<std::vector<int>, const char*> cases[] = {
      {{}, "All 8 Science data packets were collected."},
      {{3}, "There was 1 missing science data packet (pkt no. 3)"},
      {{4, 6}, "There were 2 missing science data packets (pkt nos. 4 and 6)"},
      {{2, 5, 8}, "There were 3 missing science data packets (pkt nos. 2, 5 and 8)"},
      {{1, 2, 3, 4, 5, 6, 7, 8}, "There were 8 missing science data packets (pkt nos. 1, 2, 3, 4, 5, 6, 7 and 8)"},
  };
  for (const auto& [missing, message] : cases) EXPECT_EQ(missing_packet_message(missing), message);
}

}  // namespace
}  // namespace morvane
