// SPDX-License-Identifier: MIT
// A whole evaluation from a telemetry file and a limit file, as a double click on the list runs it.
#include <gtest/gtest.h>

#include "core/error.h"
#include "functest/short_message_load.h"
#include "functest/short_test.h"
#include "short_test_files.h"

namespace morvane {
namespace {

using testing::Packet;
using testing::Test_Design;

// Readings whose values land well inside the crafted limits of every row.
Test_Design healthy_design(TestMode mode) {
  Test_Design design;
  design.in_mode(mode);
  for (int k = 1; k <= kTestReadings; ++k) {
    if (k != 1 && k != 8 && k != 27 && k != 29) design.readings[static_cast<size_t>(k)].word = 3277;  // 1.00 V
  }
  design.readings[6] = {testing::channel_of(28), 9765};  // 2.98 V: 25 degrees C
  design.readings[static_cast<size_t>(6 + final_offset(mode))] = {testing::channel_of(28), 9765};
  return design;
}

class OpenShortTest : public ::testing::Test {
 protected:
  Session load(const std::vector<Packet>& packets, FileFormat format, const std::string& mode) {
    testing::write_bytes(dir.path("t.dat"), testing::frames_of(packets, format == FileFormat::FM ? 280 : 282));
    Session session;
    session.config = testing::test_configuration();
    session.config.Egse_Path = dir.root();
    load_telemetry(session, dir.path("t.dat"), format);
    session.Test_Mode = mode;
    return session;
  }
  Short_Test_Evaluation open_first(Session& session) {
    const Short_Test_List list = find_short_tests(session);
    EXPECT_EQ(list.Test_Count(), 1);
    session.Current_Science_Index = science_index_of_line(list, 1);
    return open_short_test(session);
  }
  static std::vector<Packet> packets_of(const Test_Design& design, int32_t rf_offset = 30) {
    std::vector<Packet> packets;
    for (int n = 1; n <= 8; ++n) packets.push_back(testing::test_packet(design, n));
    if (rf_offset > 0) packets.push_back(testing::rf_event(design.start_time + rf_offset, 100));
    return packets;
  }
  static std::array<Range_Record, 38> crafted_limits() {
    auto records = testing::uniform_limits(-100, 100);
    records[35].pairs[2] = {390, 400};  // RF frequency: 100 counts are 395.79 kHz
    return records;
  }
  testing::TempDir dir;
  std::array<Range_Record, 38> limits = crafted_limits();
};

TEST_F(OpenShortTest, AHealthyTestPassesInBothModes) {
  for (const auto& [mode, text] : {std::pair{TestMode::CruisePhase, "Cruise Phase"}, std::pair{TestMode::EAFT, "EAFT"}}) {
    testing::write_limit_file(dir.root(), "QM", text, testing::limit_file_text(limits));
    Session session = load(packets_of(healthy_design(mode)), FileFormat::QM, text);
    const Short_Test_Evaluation test = open_first(session);
    EXPECT_TRUE(test.passed()) << text;
    EXPECT_EQ(test.start_label, "Test started at Lander time 5000 seconds");
    EXPECT_EQ(test.rf_frequency_text(), "395.79");
    EXPECT_EQ(test.sensors[5].initial.text, "25.00");
    EXPECT_NEAR(test.Reference_Temperature, 25.0, 0.01);
    EXPECT_EQ(test.packet_message.text, "All 8 Science data packets were collected.");
    EXPECT_NE(test.ranges_path.find(std::string("QM ") + text + " Mode.txt"), std::string::npos);
  }
}

TEST_F(OpenShortTest, AFaultyTestFailsWhereItWasMadeToFail) {
  limits[8].pairs[2] = {0.5, 1.5};  // the detector voltage
  testing::write_limit_file(dir.root(), "FM", "Cruise Phase", testing::limit_file_text(limits));
  Test_Design design = healthy_design(TestMode::CruisePhase);
  design.readings[9].word = 0;                          // the detector is off at the start
  std::vector<Packet> packets = packets_of(design, 0);  // no RF frequency event
  packets.erase(packets.begin() + 4);                   // packet 5 is lost
  Session session = load(packets, FileFormat::FM, "Cruise Phase");
  const Short_Test_Evaluation test = open_first(session);
  EXPECT_EQ(test.sensors[8].result.text, "Fail");
  EXPECT_EQ(test.rf_frequency_text(), "n.m.");
  EXPECT_EQ(test.packet_message, (Cell{"There was 1 missing science data packet (pkt no. 5)", true}));
  EXPECT_EQ(test.subsystems[0].result.text, "Fail");
  EXPECT_EQ(test.subsystems[7].result.text, "Fail");
  EXPECT_EQ(test.overall.text, "Fail");
}

TEST_F(OpenShortTest, AMissingLimitFileIsAnErrorNamingIt) {
  Session session = load(packets_of(healthy_design(TestMode::EAFT)), FileFormat::QM, "EAFT");
  try {
    open_first(session);
    FAIL();
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.number(), 53);
    EXPECT_NE(error.message().find("QM EAFT Mode.txt"), std::string::npos) << error.message();
  }
}

TEST_F(OpenShortTest, AnUnknownModeIsAnError) {
  Session session = load(packets_of(healthy_design(TestMode::EAFT)), FileFormat::QM, "EAFT");
  session.Current_Science_Index = 1;
  session.Test_Mode = "Cruise";
  EXPECT_THROW(open_short_test(session), RuntimeError);
}

TEST_F(OpenShortTest, ZebTestsAreEvaluatedThroughTheirRecords) {
  testing::write_limit_file(dir.root(), "ZEB", "EAFT", testing::limit_file_text(limits));
  const Test_Design design = healthy_design(TestMode::EAFT);
  std::vector<std::vector<int32_t>> records;
  for (int n = 1; n <= 8; ++n) records.push_back(testing::zeb_of(testing::test_packet(design, n), 1852));
  records.push_back(testing::zeb_of(testing::rf_event(design.start_time + 30, 100), 1847));
  testing::write_file(dir.path("t.zeb"), testing::zeb_text(records));
  Session session;
  session.config = testing::test_configuration();
  session.config.Egse_Path = dir.root();
  load_telemetry(session, dir.path("t.zeb"), FileFormat::ZEB);
  session.Test_Mode = "EAFT";
  const Short_Test_Evaluation test = open_first(session);
  EXPECT_TRUE(test.passed());
  EXPECT_EQ(test.mode_title, "Extended AFT");
  EXPECT_EQ(test.rf_frequency_text(), "395.79");
  EXPECT_EQ(test.sensors[5].final.text, "25.00");
}

}  // namespace
}  // namespace morvane
