// SPDX-License-Identifier: MIT
#include "views/concise_frame.h"

#include <gtest/gtest.h>

#include "core/error.h"
#include "test_files.h"

namespace morvane {
namespace {

using testing::FrameWriter;
using testing::Packet;

TEST(ConciseSlotText, EachIdentifierAndSelectorHasItsText) {
  const struct {
    int32_t identifier, class_word, sub_type;
    const char* text;
  } cases[] = {
      {3892, 0, 1, " Concise HK "},          {3892, 0, 2, " Complete HK"},
      {3892, 0, 7, " Unknown  "},            {3895, 0x0100, 0, " Normal Progress Event   "},
      {3895, 0x0200, 0, " Warning Anomalous Event "}, {3895, 0x0101, 0, " Unknown - progress event"},
      {3889, 0x0100, 0, " Acceptance Success      "}, {3889, 0x0200, 0, " Acceptance Failure      "},
      {3889, 0x0300, 0, " Unknown - acceptance    "}, {3897, 0, 0, " Memory Dump "},
      {3900, 0, 1, " Auxiliary Data   "},    {3900, 0, 2, " GC spectrum      "},
      {3900, 0, 3, " Isotope spectrum "},    {3900, 0, 4, " Unknown          "},
      {0, 0, 0, " Empty "},                  {1234, 0, 0, " Unknown "},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(concise_slot_text(c.identifier, c.class_word, c.sub_type, true), c.text) << c.identifier;
  }
}

TEST(ConciseSlotText, ClassTenIsAChecksumCrosswiseByFrameSize) {
  EXPECT_EQ(concise_slot_text(3895, 0x0A00, 0, true), " NPE - Memory Checksum   ");
  EXPECT_EQ(concise_slot_text(3895, 0x0A00, 0, false), " Unknown - progress event");
  EXPECT_EQ(concise_slot_text(3889, 0x0A00, 0, false), " NPE - Memory Checksum   ");
  EXPECT_EQ(concise_slot_text(3889, 0x0A00, 0, true), " Unknown - acceptance    ");
}

class ConciseFrame : public ::testing::Test {
 protected:
  void load(FrameWriter& writer, FileFormat format) {
    testing::write_bytes(dir.path("frames"), writer.bytes());
    load_telemetry(session, dir.path("frames"), format);
  }
  testing::TempDir dir;
  Session session;
};

TEST_F(ConciseFrame, ALongFirstPacketFillsOneSlot) {
  FrameWriter writer(282);
  writer.add_frame({Packet{0x0F34, 0, 229, 0, 0, {{16, 2}}, {}}});  // 236 bytes: the next offset is 259
  load(writer, FileFormat::CSS);
  const Concise_Slots slots = Show_Lander_Packet(session, 1);
  EXPECT_EQ(slots[0], " Complete HK");
  for (size_t k = 1; k < slots.size(); ++k) EXPECT_EQ(slots[k], "") << k;
}

TEST_F(ConciseFrame, EmptyPacketsDoNotEndTheWalkButTheEighthSlotDoes) {
  FrameWriter writer(282);
  std::vector<Packet> packets(9, Packet{0x0F3C, 0, 0, 0, 0, {}, {}});  // seven bytes each
  packets[1].identifier = 0;
  packets[7].words = {{14, 0}};
  packets[8].identifier = 0x0F39;  // the ninth is never examined
  writer.add_frame(packets);
  load(writer, FileFormat::CSS);
  const Concise_Slots slots = Show_Lander_Packet(session, 1);
  EXPECT_EQ(slots[0], " Unknown          ");
  EXPECT_EQ(slots[1], " Empty ");
  EXPECT_EQ(slots[2], " Unknown          ");
  EXPECT_EQ(slots[7], " Unknown          ");
}

TEST_F(ConciseFrame, AcceptanceClassTenReadsDifferentlyInTheTwoFrameSizes) {
  for (const int stride : {282, 280}) {
    FrameWriter writer(stride);
    writer.add_frame({Packet{0x0F31, 0, 11, 0, 0, {{14, 0x0A00}}, {}}, Packet{0x0F37, 0, 11, 0, 0, {{14, 0x0A00}}, {}}});
    load(writer, stride == 282 ? FileFormat::CSS : FileFormat::GRM);
    const Concise_Slots slots = Show_Lander_Packet(session, 1);
    EXPECT_EQ(slots[0], stride == 280 ? " NPE - Memory Checksum   " : " Unknown - acceptance    ");
    EXPECT_EQ(slots[1], stride == 282 ? " NPE - Memory Checksum   " : " Unknown - progress event");
  }
}

TEST_F(ConciseFrame, AFrameStartingPastTheEndOfTheFileIsInputPastEnd) {
  FrameWriter writer(280);
  writer.add_frame({});
  writer.add_frame({});
  load(writer, FileFormat::FM);  // 560 bytes: frame 3 starts at the end
  ASSERT_EQ(session.Packet_Count, 3);
  EXPECT_EQ(Show_Lander_Packet(session, 2)[0], " Empty ");
  try {
    Show_Lander_Packet(session, 3);
    FAIL() << "frame 3 was read";
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.number(), 62);
  }
}

TEST_F(ConciseFrame, ByteOrderDecidesWhatTheWalkFinds) {
  FrameWriter writer(282);
  writer.add_frame({Packet{0x0F37, 0, 11, 0, 0, {{14, 0x0100}}, {}}});
  load(writer, FileFormat::QM);
  EXPECT_EQ(Show_Lander_Packet(session, 1)[0], " Normal Progress Event   ");
  session.Byte_Reverse = false;
  EXPECT_EQ(Show_Lander_Packet(session, 1)[0], " Unknown ");
}

TEST(ConciseZeb, ZebFilesShowEightEmptySlots) {
  testing::TempDir dir;
  testing::write_file(dir.path("z"), testing::zeb_text({testing::zeb_record({{5, 1844}, {17, 1}})}));
  Session session;
  load_telemetry(session, dir.path("z"), FileFormat::ZEB);
  for (const std::string& slot : Show_Lander_Packet(session, 1)) EXPECT_EQ(slot, "");
}

}  // namespace
}  // namespace morvane
