// SPDX-License-Identifier: MIT
#include "functest/short_message_load.h"

#include <gtest/gtest.h>

#include "core/error.h"
#include "short_test_files.h"

namespace morvane {
namespace {

using testing::Packet;
using testing::Test_Design;

// A session over crafted packets, each in a frame of its own.
class ShortTestList : public ::testing::Test {
 protected:
  Session load(const std::vector<Packet>& packets, FileFormat format = FileFormat::QM) {
    testing::write_bytes(dir.path("t.dat"), testing::frames_of(packets));
    Session session;
    session.config = testing::test_configuration();
    load_telemetry(session, dir.path("t.dat"), format);
    return session;
  }
  static std::vector<Packet> test_packets(const Test_Design& design) {
    std::vector<Packet> packets;
    for (int n = 1; n <= 8; ++n) packets.push_back(testing::test_packet(design, n));
    return packets;
  }
  static std::vector<int32_t> starts(const Session& session, TestMode mode) {
    return find_short_tests(session, mode).Test_Index;
  }
  testing::TempDir dir;
};

TEST(ShortTestLine, ColumnsAreSixNineAndFifteenWide) {
  EXPECT_EQ(short_test_line(3, 1234, 56789012), "3     Short form test     1234       56789012");
  EXPECT_EQ(short_test_line(123456, 123456789, -2147483647),
            "123456Short form test123456789    -2147483647");
}

TEST(ShortTestLine, ANumberWiderThanItsColumnIsError5) {
  for (const auto& [n, s, t] : {std::tuple{1234567, 1, 1}, std::tuple{1, 1234567890, 1}}) {
    try {
      short_test_line(n, s, t);
      ADD_FAILURE() << n << " " << s;
    } catch (const RuntimeError& error) {
      EXPECT_EQ(error.number(), 5);
    }
  }
}

TEST(ShortTestLabels, SayHowManyTestsWereFound) {
  const std::tuple<int, const char*, const char*> cases[] = {
      {0, "There were no Short form tests collected during this session", "Press 'cancel' to exit"},
      {1, "There was 1 Short form test collected during this session",
       "Double click on test to view or Press 'cancel' to exit"},
      {12, "There were 12 Short form tests collected during this session",
       "Double click on test to view or Press 'cancel' to exit"},
  };
  for (const auto& [count, label1, label2] : cases) {
    EXPECT_EQ(short_test_count_label(count), label1);
    EXPECT_EQ(short_test_hint_label(count), label2);
  }
}

TEST(FindShortTests, WithNoFileLoadedThereAreNoTests) {
  Session session;
  session.Test_Mode = "EAFT";
  const Short_Test_List list = find_short_tests(session);
  EXPECT_EQ(list.Test_Count(), 0);
  EXPECT_EQ(list.Label1, "There were no Short form tests collected during this session");
}

TEST(FindShortTests, AnUnknownModeIsAnErrorNotAHalt) {
  Session session;
  session.Test_Mode = "Landing";
  EXPECT_THROW(find_short_tests(session), RuntimeError);
}

TEST_F(ShortTestList, ListsTheFirstPacketOfATestWithItsSequenceAndTime) {
  Test_Design design;
  design.start_sequence = 1234;
  design.start_time = 56789012;
  Session session = load(test_packets(design));
  session.Test_Mode = "Cruise Phase";
  const Short_Test_List list = find_short_tests(session);
  ASSERT_EQ(list.Test_Count(), 1);
  EXPECT_EQ(list.lines[0], "1     Short form test     1234       56789012");
  EXPECT_EQ(list.Label1, "There was 1 Short form test collected during this session");
  EXPECT_EQ(science_index_of_line(list, 1), 1);
  EXPECT_THROW(science_index_of_line(list, 2), RuntimeError);
}

TEST_F(ShortTestList, TheTwoModesFindDifferentTests) {
  std::vector<Packet> packets = test_packets(Test_Design{});
  Test_Design eaft;
  eaft.in_mode(TestMode::EAFT).start_sequence = 200;
  for (const Packet& packet : test_packets(eaft)) packets.push_back(packet);
  const Session session = load(packets);
  EXPECT_EQ(starts(session, TestMode::CruisePhase), std::vector<int32_t>{1});
  EXPECT_EQ(starts(session, TestMode::EAFT), std::vector<int32_t>{9});
}

TEST_F(ShortTestList, EachOfTheFiveWordsMustMatch) {
  const std::pair<int, int32_t> spoilers[] = {{18, 28}, {24, 24}, {80, 65}, {232, 1}, {248, 136}};
  for (const auto& [offset, word] : spoilers) {
    std::vector<Packet> packets = test_packets(Test_Design{});
    packets[0].words[offset] = word;
    EXPECT_TRUE(starts(load(packets), TestMode::CruisePhase).empty()) << offset;
  }
}

TEST_F(ShortTestList, ANonAuxiliaryPacketWithinTheEightSequenceCountsSpoilsTheTest) {
  std::vector<Packet> packets = test_packets(Test_Design{});
  packets.insert(packets.begin() + 3, testing::gc_packet(107, 5100));  // sequence count s + 7
  EXPECT_TRUE(starts(load(packets), TestMode::CruisePhase).empty());
}

TEST_F(ShortTestList, APacketBeyondTheEightEndsTheLookAhead) {
  std::vector<Packet> packets = test_packets(Test_Design{});
  packets.insert(packets.begin() + 3, testing::gc_packet(108, 5100));  // s + 8: not the test's
  packets.insert(packets.begin() + 4, testing::gc_packet(103, 5100));  // never looked at
  EXPECT_EQ(starts(load(packets), TestMode::CruisePhase), std::vector<int32_t>{1});
}

TEST_F(ShortTestList, AStartNearTheEndOfTheListIsStillListed) {
  const std::vector<Packet> packets = {testing::gc_packet(1, 1), testing::test_packet(Test_Design{}, 1)};
  EXPECT_EQ(starts(load(packets), TestMode::CruisePhase), std::vector<int32_t>{2});
}

TEST_F(ShortTestList, OverlappingStartsAreBothListed) {
  Test_Design later;
  later.start_sequence = 103;
  std::vector<Packet> packets = test_packets(Test_Design{});
  packets.insert(packets.begin() + 3, testing::test_packet(later, 1));
  EXPECT_EQ(starts(load(packets), TestMode::CruisePhase), (std::vector<int32_t>{1, 4}));
}

TEST_F(ShortTestList, ZebTestsAreReadThroughTheirRecords) {
  std::vector<std::vector<int32_t>> records;
  for (const Packet& packet : test_packets(Test_Design{}.in_mode(TestMode::EAFT))) {
    records.push_back(testing::zeb_of(packet, 1852));
  }
  testing::write_file(dir.path("t.zeb"), testing::zeb_text(records));
  Session session;
  load_telemetry(session, dir.path("t.zeb"), FileFormat::ZEB);
  ASSERT_EQ(session.catalogue.Science_Count(), 8);
  const Short_Test_List list = find_short_tests(session, TestMode::EAFT);
  ASSERT_EQ(list.Test_Count(), 1);
  EXPECT_EQ(list.lines[0], "1     Short form test      100           5000");
  EXPECT_TRUE(starts(session, TestMode::CruisePhase).empty());
}

}  // namespace
}  // namespace morvane
