// SPDX-License-Identifier: MIT
// The short form tests in the simulated files: where they start, what the selection list's word
// checks find on their first packets, their eight packets in the window (one lost in the faulty
// tests) and the RF calibration report inside it.
#include "sim/short_form_tests.h"

#include <gtest/gtest.h>

#include <cmath>

#include "sim/instrument_model.h"
#include "sim_fixture.h"

namespace morvane {
namespace {

using testing::Simulated_File;

// The selection list's checks on the first packet of a test: 29 readings, reading 1 of the
// mode's gauge, reading 8 the nanotip, reading 27 the empty slot, reading 29 the 28 V current.
bool passes_word_checks(const Simulated_File& file, const Packet_Entry& e, std::string_view mode) {
  return file.word(e, 18) == 29 && file.word(e, 24) == (mode == "EAFT" ? 24 : 23) && file.word(e, 80) == 64 &&
         file.word(e, 232) == 0 && file.word(e, 248) == 144;
}

const sim::Scripted_Test& scripted(const sim::Written_Test& test) {
  return sim::scripted_tests()[static_cast<size_t>(test.scripted)];
}

// The science entry of a test's first packet.
int32_t first_packet(const Simulated_File& file, const sim::Written_Test& test) {
  const EntryList& science = file.catalogue().Science_List;
  for (int32_t i = 1; i <= science.size(); ++i) {
    if (science[i].Packet_Frame == test.frame && science[i].Sequence_Count == test.sequence_count) return i;
  }
  return 0;
}

// The channel of reading k (1..232) of a test, or -1 when its packet is not in the file.
int channel_of_reading(const Simulated_File& file, int32_t first, int k) {
  const EntryList& science = file.catalogue().Science_List;
  const int packet = (k - 1) / 29 + 1;
  const int32_t start = science[first].Sequence_Count;
  for (int32_t i = first; i <= science.size() && i < first + 8; ++i) {
    if (science[i].Sequence_Count == start + packet - 1) return file.word(science[i], 16 + 8 * ((k - 1) % 29 + 1));
  }
  return -1;
}

TEST(ScriptedTests, EachModeHasAHealthyAndAFaultyTest) {
  const auto& tests = sim::scripted_tests();
  ASSERT_EQ(tests.size(), 4u);
  for (std::string_view mode : {"Cruise Phase", "EAFT"}) {
    int healthy = 0, faulty = 0;
    for (const auto& t : tests) {
      if (t.mode != mode) continue;
      if (t.healthy) {
        ++healthy;
        EXPECT_TRUE(t.failing_items.empty());
        EXPECT_EQ(t.missing_packet, 0);
        EXPECT_EQ(t.packet_message, "All 8 Science data packets were collected.");
      } else {
        ++faulty;
        EXPECT_GE(t.failing_items.size(), 3u);
        EXPECT_EQ(t.packet_message,
                  "There was 1 missing science data packet (pkt no. " + std::to_string(t.missing_packet) + ")");
      }
    }
    EXPECT_EQ(healthy, 1) << mode;
    EXPECT_EQ(faulty, 1) << mode;
  }
}

class TestFiles : public ::testing::TestWithParam<sim::Telemetry_Options> {};

TEST_P(TestFiles, OnlyTheFirstPacketsOfTheTestsPassTheWordChecksOfTheirMode) {
  Simulated_File file(GetParam());
  ASSERT_EQ(file.written.tests.size(), 4u);
  const EntryList& science = file.catalogue().Science_List;
  for (std::string_view mode : {"Cruise Phase", "EAFT"}) {
    std::vector<int32_t> found, expected;
    for (int32_t i = 1; i <= science.size(); ++i) {
      if (science[i].Label == LabelCode::AuxiliaryData && passes_word_checks(file, science[i], mode))
        found.push_back(i);
    }
    for (const auto& t : file.written.tests) {
      if (scripted(t).mode == mode) expected.push_back(first_packet(file, t));
    }
    EXPECT_EQ(found, expected) << mode;
    EXPECT_EQ(found.size(), 2u) << mode;
  }
}

TEST_P(TestFiles, EachTestSendsItsPacketsWithinTheWindowAndTheFaultyOnesLoseOne) {
  Simulated_File file(GetParam());
  const EntryList& science = file.catalogue().Science_List;
  for (const auto& t : file.written.tests) {
    const int32_t first = first_packet(file, t);
    ASSERT_GT(first, 0);
    EXPECT_EQ(science[first].Lander_Time, t.lander_time);
    std::vector<int> numbers;
    for (int32_t i = first; i <= science.size() && science[i].Sequence_Count <= t.sequence_count + 7; ++i) {
      const Packet_Entry& e = science[i];
      EXPECT_EQ(e.Label, LabelCode::AuxiliaryData);
      EXPECT_LE(e.Lander_Time, t.lander_time + 900);
      EXPECT_EQ(file.word(e, 18), 29);
      numbers.push_back(e.Sequence_Count - t.sequence_count + 1);
    }
    std::vector<int> expected;
    for (int n = 1; n <= 8; ++n) {
      if (n != scripted(t).missing_packet) expected.push_back(n);
    }
    EXPECT_EQ(numbers, expected) << scripted(t).mode << (scripted(t).healthy ? " healthy" : " faulty");
  }
}

TEST_P(TestFiles, OneRfCalibrationReportFallsInsideEachTestWindow) {
  Simulated_File file(GetParam());
  const EntryList& information = file.catalogue().Information_List;
  for (const auto& t : file.written.tests) {
    int reports = 0;
    for (int32_t i = 1; i <= information.size(); ++i) {
      const Packet_Entry& e = information[i];
      if (e.Lander_Time <= t.lander_time || e.Lander_Time >= t.lander_time + 900) continue;
      if (e.Label != LabelCode::NormalProgressEvent || file.word(e, 16) != 55113) continue;
      ++reports;
      const int count = file.word(e, 56) & 0x0FFF;
      EXPECT_NEAR(count * (36.8 / 512) + 388.6, scripted(t).rf_frequency, 1e-9);
    }
    EXPECT_EQ(reports, 1) << scripted(t).mode;
  }
}

TEST_P(TestFiles, ReadingsLieWhereTheEvaluationTakesThem) {
  Simulated_File file(GetParam());
  for (const auto& t : file.written.tests) {
    const int32_t first = first_packet(file, t);
    const bool eaft = scripted(t).mode == "EAFT";
    const int final_sweep = eaft ? 206 : 218;
    struct Expect {
      int reading, channel;
    };
    // The AD590 and the rails, at the start and in the final sweep; the first current samples.
    const Expect expected[] = {{6, 28},
                               {6 + final_sweep, 28},
                               {11, 130},
                               {12, 131},
                               {final_sweep + 11, 130},
                               {final_sweep + 12, 131},
                               {13, 136},
                               {14, 144},
                               {9, 65},
                               {9 + final_sweep, 65}};
    for (const Expect& x : expected) {
      const int channel = channel_of_reading(file, first, x.reading);
      if (channel == -1) continue;  // in the lost packet
      EXPECT_EQ(channel, x.channel) << scripted(t).mode << " reading " << x.reading;
    }
    // Every reading names a sensor, but the valves' switching slots (channel 0).
    for (int k = 1; k <= 232; ++k) {
      const int channel = channel_of_reading(file, first, k);
      if (channel > 0) {
        EXPECT_GT(sim::sensor_of_channel(channel), 0) << "reading " << k;
      }
    }
  }
}

sim::Telemetry_Options options(FileFormat format, bool byte_reverse, uint64_t seed) {
  sim::Telemetry_Options o;
  o.format = format;
  o.byte_reverse = byte_reverse;
  o.seed = seed;
  return o;
}

INSTANTIATE_TEST_SUITE_P(Formats, TestFiles,
                         ::testing::Values(options(FileFormat::CSS, true, 1), options(FileFormat::GRM, false, 2),
                                           options(FileFormat::ZEB, true, 3)),
                         [](const auto& info) { return std::string(format_tag(info.param.format)); });

}  // namespace
}  // namespace morvane
