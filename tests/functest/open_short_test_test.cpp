// SPDX-License-Identifier: MIT
// A whole evaluation from a telemetry file and a limit file, as a double click on the list runs
// it; the simulated tests check what it finds in every format.
#include <gtest/gtest.h>

#include "functest/short_message_load.h"
#include "functest/short_test.h"
#include "short_test_files.h"
#include "thrown.h"

namespace morvane {
namespace {

// The eight packets of a test whose readings land well inside the crafted limits of every row,
// and its RF frequency event.
std::vector<testing::Packet> healthy_test(TestMode mode) {
  testing::Test_Design design;
  design.in_mode(mode);
  for (int k = 1; k <= kTestReadings; ++k) {
    if (k != 1 && k != 8 && k != 27 && k != 29) design.readings[static_cast<size_t>(k)].word = 3277;  // 1.00 V
  }
  design.readings[6] = {testing::channel_of(28), 9765};  // 2.98 V: 25 degrees C
  design.readings[static_cast<size_t>(6 + final_offset(mode))] = {testing::channel_of(28), 9765};
  std::vector<testing::Packet> packets;
  for (int n = 1; n <= 8; ++n) packets.push_back(testing::test_packet(design, n));
  packets.push_back(testing::rf_event(design.start_time + 30, 100));
  return packets;
}

class OpenShortTest : public ::testing::Test {
 protected:
  // The first test of the list, opened in the mode.
  Short_Test_Evaluation open(TestMode mode, const std::string& mode_text) {
    testing::write_bytes(dir.path("t.dat"), testing::frames_of(healthy_test(mode)));
    session.config = testing::test_configuration();
    session.config.Egse_Path = dir.root();
    load_telemetry(session, dir.path("t.dat"), FileFormat::QM);
    session.Test_Mode = mode_text;
    const Short_Test_List list = find_short_tests(session);
    EXPECT_EQ(list.Test_Count(), 1);
    session.Current_Science_Index = science_index_of_line(list, 1);
    return open_short_test(session);
  }
  testing::TempDir dir;
  Session session;
};

TEST_F(OpenShortTest, AHealthyTestPassesInBothModes) {
  auto limits = testing::uniform_limits(-100, 100);
  limits[35].pairs[2] = {390, 400};  // RF frequency: 100 counts are 395.79 kHz
  for (const auto& [mode, text] :
       {std::pair{TestMode::CruisePhase, "Cruise Phase"}, std::pair{TestMode::EAFT, "EAFT"}}) {
    testing::write_limit_file(dir.root(), "QM", text, testing::limit_file_text(limits));
    const Short_Test_Evaluation test = open(mode, text);
    EXPECT_TRUE(test.passed()) << text;
    EXPECT_EQ(test.start_label, "Test started at Lander time 5000 seconds");
    EXPECT_EQ(test.rf_frequency_text(), "395.79");
    EXPECT_EQ(test.sensors[5].initial.text, "25.00");
    EXPECT_NEAR(test.Reference_Temperature, 25.0, 0.01);
    EXPECT_EQ(test.packet_message.text, "All 8 Science data packets were collected.");
    EXPECT_PRED2(testing::contains, test.ranges_path, std::string("QM ") + text + " Mode.txt");
  }
}

TEST_F(OpenShortTest, AMissingLimitFileOrAnUnknownModeIsAnError) {
  const testing::Thrown missing = testing::thrown([&] { open(TestMode::EAFT, "EAFT"); });
  EXPECT_EQ(missing.number, 53);
  EXPECT_PRED2(testing::contains, missing.message, "QM EAFT Mode.txt");
  session.Test_Mode = "Cruise";
  EXPECT_NE(testing::thrown([&] { open_short_test(session); }).number, 0);
}

}  // namespace
}  // namespace morvane
