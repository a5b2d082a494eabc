// SPDX-License-Identifier: MIT
#include "decoders/concise_frame.h"

#include <gtest/gtest.h>

#include "decoder_fixture.h"

namespace morvane {
namespace {

using testing::FrameWriter;
using testing::LoadedFile;
using testing::Packet;

TEST(ConciseSlotText, EachIdentifierAndSelectorHasItsText) {
  const struct {
    int32_t identifier, class_word, sub_type;
    bool frame_282;
    const char* text;
  } cases[] = {
      {3892, 0, 1, true, " Concise HK "},         {3892, 0, 2, true, " Complete HK"},
      {3892, 0, 7, true, " Unknown  "},           {3895, 0x0100, 0, true, " Normal Progress Event   "},
      {3895, 0x0200, 0, true, " Warning Anomalous Event "}, {3895, 0x0101, 0, true, " Unknown - progress event"},
      {3889, 0x0100, 0, true, " Acceptance Success      "}, {3889, 0x0200, 0, true, " Acceptance Failure      "},
      {3889, 0x0300, 0, true, " Unknown - acceptance    "}, {3897, 0, 0, true, " Memory Dump "},
      {3900, 0, 1, true, " Auxiliary Data   "},   {3900, 0, 2, true, " GC spectrum      "},
      {3900, 0, 3, true, " Isotope spectrum "},   {3900, 0, 4, true, " Unknown          "},
      {0, 0, 0, true, " Empty "},                 {1234, 0, 0, true, " Unknown "},
      // Class ten is a memory checksum crosswise: an event in 282-byte frames, an acceptance in 280.
      {3895, 0x0A00, 0, true, " NPE - Memory Checksum   "}, {3895, 0x0A00, 0, false, " Unknown - progress event"},
      {3889, 0x0A00, 0, false, " NPE - Memory Checksum   "}, {3889, 0x0A00, 0, true, " Unknown - acceptance    "},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(concise_slot_text(c.identifier, c.class_word, c.sub_type, c.frame_282), c.text) << c.identifier;
  }
}

TEST(ConciseFrame, EmptyPacketsDoNotEndTheWalkButTheEighthSlotDoes) {
  std::vector<Packet> packets(9, Packet{testing::kScienceId, 0, 0, 0, 0, {}, {}});  // seven bytes each
  packets[1].identifier = 0;
  packets[7].words = {{14, 0}};
  packets[8].identifier = testing::kMemoryDumpId;  // the ninth is never examined
  FrameWriter writer(282);
  writer.add_frame(packets);
  const ConciseSlots slots = Show_Lander_Packet(LoadedFile(writer).session, 1);
  EXPECT_EQ(slots[0], " Unknown          ");
  EXPECT_EQ(slots[1], " Empty ");
  EXPECT_EQ(slots[2], " Unknown          ");
  EXPECT_EQ(slots[7], " Unknown          ");
}

TEST(ConciseFrame, AFrameStartingPastTheEndOfTheFileIsInputPastEnd) {
  FrameWriter writer(280);
  writer.add_frame({});
  writer.add_frame({});
  const LoadedFile file(writer, FileFormat::FM);  // 560 bytes: frame 3 starts at the end
  ASSERT_EQ(file.session.Packet_Count, 3);
  EXPECT_EQ(Show_Lander_Packet(file.session, 2)[0], " Empty ");
  EXPECT_EQ(testing::thrown([&] { Show_Lander_Packet(file.session, 3); }).number, 62);
}

}  // namespace
}  // namespace morvane
