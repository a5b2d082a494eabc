// SPDX-License-Identifier: MIT
// The raw and concise views, and the pause button.
#include <QMdiSubWindow>
#include <QPushButton>
#include <QScrollBar>
#include <QTimer>

#include "app_fixture.h"
#include "concise_view.h"
#include "drawing_view.h"
#include "raw_view.h"
#include "summary_view.h"
#include "twips.h"
#include "decoders/raw_frame.h"

namespace morvane {
namespace {

using PacketViews = testing::AppTest;

TEST_F(PacketViews, TheRawViewStepsThroughEveryFrameWithItsScrollBar) {
  testing::FrameWriter writer = testing::three_frames();
  const QString path = write_frames("t.css", writer);
  ASSERT_TRUE(window->load_file(FileFormat::CSS, path));
  auto* raw = show<RawData>(ViewKind::RawData);
  EXPECT_EQ(raw->windowTitle(), path);
  EXPECT_EQ(raw->count_label(), "Number of Lander packets = 3");
  EXPECT_EQ(raw->frame_label(), "Lander packet number 1");
  EXPECT_EQ(raw->scroll_bar()->maximum(), 3);
  raw->scroll_bar()->setValue(2);
  EXPECT_EQ(raw->frame_label(), "Lander packet number 2");
  EXPECT_EQ(raw->picture()->drawing(), Display_282_Byte_Packet(window->session(), 2).words);

  // Only the texts in the painted area are painted, each where its twips put it.
  DrawingView* picture = raw->picture();
  QApplication::processEvents();  // the whole picture's pending paint goes first
  picture->repaint(QRect(0, 0, picture->width(), picture->text_rects()[8].top()));
  EXPECT_EQ(picture->texts_painted(), 8);  // the first row
  EXPECT_EQ(picture->text_rects()[4].left(), twips_to_pixels(picture->drawing()[4].x, picture->logicalDpiX()));

  // Beyond the 32767 frames a classic scroll bar reached.
  testing::write_bytes(dir.path("long.css"), std::vector<uint8_t>(282u * 40000u, 0));
  ASSERT_TRUE(window->load_file(FileFormat::CSS, QString::fromStdString(dir.path("long.css"))));
  raw = shown<RawData>(ViewKind::RawData);
  EXPECT_EQ(raw->scroll_bar()->maximum(), 40000);
  raw->scroll_bar()->setValue(39999);
  EXPECT_EQ(raw->frame_label(), "Lander packet number 39999");
  raw->scroll_bar()->triggerAction(QAbstractSlider::SliderSingleStepAdd);
  EXPECT_EQ(raw->current_frame(), 40000);
  EXPECT_TRUE(no_message());
}

TEST_F(PacketViews, TheConciseViewShowsTheSlotsOfAFrameAndReportsAFrameThatStartsPastTheEnd) {
  ASSERT_TRUE(load_frames(testing::three_frames()));
  auto* concise = show<Concise_Form>(ViewKind::Concise);
  EXPECT_EQ(concise->windowTitle(), "Concise Data");
  EXPECT_EQ(concise->frame_text(), "1");
  EXPECT_EQ(concise->slot_text(0), " Complete HK");
  EXPECT_EQ(concise->slot_text(2), " Isotope spectrum ");
  concise->scroll_bar()->setValue(2);
  EXPECT_EQ(concise->frame_text(), "2");
  EXPECT_EQ(concise->slot_text(1), " Acceptance Failure      ");

  testing::FrameWriter writer = testing::three_frames(280);
  ASSERT_TRUE(window->load_file(FileFormat::FM, write_frames("t.fm", writer)));  // 840 bytes: four frames
  concise = shown<Concise_Form>(ViewKind::Concise);
  concise->scroll_bar()->setValue(4);
  EXPECT_TRUE(one_message("Input past end of file"));
  EXPECT_TRUE(dialogs.messages[0].endsWith("; Error number 62"));
  EXPECT_EQ(concise->frame_text(), "1");  // the slots keep what they showed
}

TEST_F(PacketViews, PauseAndContinueSwitchTheCollectionTimer) {
  QPushButton* button = show<Concise_Form>(ViewKind::Concise)->pause_button();
  window->collection_timer()->start();
  for (const auto& [active, caption] : {std::pair{true, "Pause"}, {false, "Continue"}, {true, "Pause"}}) {
    EXPECT_EQ(button->text(), caption);
    EXPECT_EQ(window->collection_timer()->isActive(), active);
    button->click();
  }
  window->collection_timer()->stop();
}

}  // namespace
}  // namespace morvane
