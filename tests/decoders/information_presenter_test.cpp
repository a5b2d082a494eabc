// SPDX-License-Identifier: MIT
#include "decoders/information_presenter.h"

#include <gtest/gtest.h>

#include "decoder_fixture.h"

namespace morvane {
namespace {

using testing::FrameWriter;
using testing::information_packet;
using testing::kEventId;
using testing::LoadedFile;
using testing::Packet;

TEST(InformationView, WordCountRoundsHalfToEven) {
  const std::pair<int32_t, int> cases[] = {{-1, 0}, {0, 0},   {1, 0},   {2, 1},   {3, 2},  {5, 2},
                                           {7, 4},  {21, 10}, {23, 12}, {63, 32}, {64, 32}};
  for (const auto& [length, words] : cases) EXPECT_EQ(information_word_count(length), words) << length;
}

TEST(InformationView, AShortPacketKeepsTheHigherWordsOfTheOneBefore) {
  LoadedFile file(testing::one_a_frame({information_packet(kEventId, 1, {{9, 55001}, {10, 0xAA00}, {28, 5}, {29, 6}}),
                                         information_packet(kEventId, 1, {{9, 55001}, {10, 0xAA00}}, 20)}));
  InformationPresenter view;
  view.show(file.session, 1);
  view.show(file.session, 3);  // entry 2 is the empty slot after the long packet
  EXPECT_EQ(view.words().count(), 10);
  EXPECT_EQ(view.raw_dump().size(), 10u);
  EXPECT_EQ(view.translation()[2].text, "Selected RAM data page  5");
  EXPECT_EQ(view.translation()[3].text, "Selected RAM code page 6");
}

TEST(InformationView, AnErrorKeepsWhatTheViewShowed) {
  LoadedFile file(testing::one_a_frame({information_packet(kEventId, 1, {{9, 55113}}, 64),
                                         information_packet(kEventId, 1, {{9, 55114}}, 65),
                                         // One block of 30 data words: words 13..42, of which only 13..32 exist.
                                         information_packet(testing::kMemoryDumpId, 0, {{9, 0x9601}, {12, 30}})}));
  InformationPresenter view;
  view.show(file.session, 1);
  EXPECT_EQ(testing::thrown([&] { view.show(file.session, 3); }).number, 9);  // longer than 64 bytes
  EXPECT_EQ(view.labels().Label3, "Information Pkt 3");
  EXPECT_EQ(view.words().word(9), 55113);
  EXPECT_EQ(view.raw_dump().size(), 32u);
  EXPECT_EQ(view.translation()[0].text, "RF Calibration report");
  // A memory table beyond word 32 keeps its rows but not the lines.
  EXPECT_EQ(testing::thrown([&] { view.show(file.session, 5); }).number, 9);
  EXPECT_EQ(view.memory().size(), 23u);  // words 10..32
  EXPECT_EQ(view.translation()[0].text, "");
}

}  // namespace
}  // namespace morvane
