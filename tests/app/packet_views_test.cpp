// SPDX-License-Identifier: MIT
// The raw and concise views, the byte-order switch that rebuilds them, and the pause button.
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

TEST_F(PacketViews, SwitchingByteReverseTwiceRestoresTheViewsInTheirPlaces) {
  ASSERT_TRUE(load_frames(testing::three_frames()));
  const ViewKind kinds[] = {ViewKind::RawData, ViewKind::Summary, ViewKind::Concise};
  for (int k = 0; k < 3; ++k) window->frameOf(window->showView(kinds[k]))->move(30 + 90 * k, 20 + 45 * k);
  // What the packet views show, to compare before and after a switch.
  struct Shown {
    Drawing raw;
    QStringList summary;
    QStringList concise;
    std::vector<QPoint> places;
  };
  auto shown_now = [&] {
    Shown s;
    s.raw = shown<RawData>(ViewKind::RawData)->picture()->drawing();
    const auto* summary = shown<Summary>(ViewKind::Summary);
    for (int row = 0; row < summary->model(2)->rowCount(); ++row) {
      s.summary << summary->model(2)->data(summary->model(2)->index(row)).toString();
    }
    for (int k = 0; k < kConciseSlots; ++k) s.concise << shown<Concise_Form>(ViewKind::Concise)->slotText(k);
    for (const ViewKind kind : kinds) s.places.push_back(window->frameOf(window->view(kind))->pos());
    return s;
  };
  const Shown before = shown_now();
  window->menuItem("mnuDisplayByteReverse")->trigger();
  EXPECT_FALSE(window->session().Byte_Reverse);
  EXPECT_FALSE(window->menuItem("mnuDisplayByteReverse")->isChecked());
  const Shown reversed = shown_now();
  EXPECT_EQ(reversed.raw[11].text, "340F");
  EXPECT_EQ(reversed.concise[0], " Unknown ");
  EXPECT_EQ(reversed.summary, before.summary);  // the catalogue is not rebuilt
  EXPECT_EQ(reversed.places, before.places);
  window->menuItem("mnuDisplayByteReverse")->trigger();
  const Shown after = shown_now();
  EXPECT_EQ(after.raw, before.raw);
  EXPECT_EQ(after.summary, before.summary);
  EXPECT_EQ(after.concise, before.concise);
  EXPECT_EQ(after.places, before.places);
  EXPECT_TRUE(window->menuItem("mnuDisplayByteReverse")->isChecked());
}

}  // namespace
}  // namespace morvane
