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
#include "views/raw_frame.h"

namespace morvane {
namespace {

using PacketViews = testing::AppTest;

TEST_F(PacketViews, TheRawViewStepsThroughEveryFrameWithItsScrollBar) {
  testing::FrameWriter writer = testing::three_frames();
  const QString path = write_frames("t.css", writer);
  ASSERT_TRUE(window->loadFile(FileFormat::CSS, path));
  auto* raw = show<RawData>(ViewKind::RawData);
  EXPECT_EQ(raw->windowTitle(), path);
  EXPECT_EQ(raw->countLabel(), "Number of Lander packets = 3");
  EXPECT_EQ(raw->frameLabel(), "Lander packet number 1");
  EXPECT_EQ(raw->scrollBar()->maximum(), 3);
  raw->scrollBar()->setValue(2);
  EXPECT_EQ(raw->frameLabel(), "Lander packet number 2");
  EXPECT_EQ(raw->picture()->drawing(), Display_282_Byte_Packet(window->session(), 2).words);

  // Only the texts in the painted area are painted, each where its twips put it.
  DrawingView* picture = raw->picture();
  QApplication::processEvents();  // the whole picture's pending paint goes first
  picture->repaint(QRect(0, 0, picture->width(), picture->textRects()[8].top()));
  EXPECT_EQ(picture->textsPainted(), 8);  // the first row
  EXPECT_EQ(picture->textRects()[4].left(), twips_to_pixels(picture->drawing()[4].x, picture->logicalDpiX()));

  // Beyond the 32767 frames a classic scroll bar reached.
  testing::write_bytes(dir.path("long.css"), std::vector<uint8_t>(282u * 40000u, 0));
  ASSERT_TRUE(window->loadFile(FileFormat::CSS, QString::fromStdString(dir.path("long.css"))));
  raw = shown<RawData>(ViewKind::RawData);
  EXPECT_EQ(raw->scrollBar()->maximum(), 40000);
  raw->scrollBar()->setValue(39999);
  EXPECT_EQ(raw->frameLabel(), "Lander packet number 39999");
  raw->scrollBar()->triggerAction(QAbstractSlider::SliderSingleStepAdd);
  EXPECT_EQ(raw->currentFrame(), 40000);
  EXPECT_TRUE(no_message());
}

TEST_F(PacketViews, TheConciseViewShowsTheSlotsOfAFrameAndReportsAFrameThatStartsPastTheEnd) {
  ASSERT_TRUE(load_frames(testing::three_frames()));
  auto* concise = show<Concise_Form>(ViewKind::Concise);
  EXPECT_EQ(concise->windowTitle(), "Concise Data");
  EXPECT_EQ(concise->frameText(), "1");
  EXPECT_EQ(concise->slotText(0), " Complete HK");
  EXPECT_EQ(concise->slotText(2), " Isotope spectrum ");
  concise->scrollBar()->setValue(2);
  EXPECT_EQ(concise->frameText(), "2");
  EXPECT_EQ(concise->slotText(1), " Acceptance Failure      ");

  testing::FrameWriter writer = testing::three_frames(280);
  ASSERT_TRUE(window->loadFile(FileFormat::FM, write_frames("t.fm", writer)));  // 840 bytes: four frames
  concise = shown<Concise_Form>(ViewKind::Concise);
  concise->scrollBar()->setValue(4);
  EXPECT_TRUE(one_message("Input past end of file"));
  EXPECT_TRUE(dialogs.messages[0].endsWith("; Error number 62"));
  EXPECT_EQ(concise->frameText(), "1");  // the slots keep what they showed
}

TEST_F(PacketViews, PauseAndContinueSwitchTheCollectionTimer) {
  QPushButton* button = show<Concise_Form>(ViewKind::Concise)->pauseButton();
  window->collectionTimer()->start();
  for (const auto& [active, caption] : {std::pair{true, "Pause"}, {false, "Continue"}, {true, "Pause"}}) {
    EXPECT_EQ(button->text(), caption);
    EXPECT_EQ(window->collectionTimer()->isActive(), active);
    button->click();
  }
  window->collectionTimer()->stop();
}

}  // namespace
}  // namespace morvane
