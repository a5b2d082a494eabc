// SPDX-License-Identifier: MIT
// The raw and concise views, the byte-order switch that rebuilds them, and the pause button.
#include <QLabel>
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

TEST_F(PacketViews, TheRawViewStepsThroughTheFramesWithItsScrollBar) {
  testing::FrameWriter writer = testing::three_frames();
  const QString path = write_frames("t.css", writer);
  ASSERT_TRUE(window->loadFile(FileFormat::CSS, path));
  auto* raw = static_cast<RawData*>(window->showView(ViewKind::RawData));
  EXPECT_EQ(raw->windowTitle(), path);
  EXPECT_EQ(raw->countLabel(), "Number of Lander packets = 3");
  EXPECT_EQ(raw->frameLabel(), "Lander packet number 1");
  EXPECT_EQ(raw->scrollBar()->maximum(), 3);
  raw->scrollBar()->setValue(2);
  EXPECT_EQ(raw->frameLabel(), "Lander packet number 2");
  EXPECT_EQ(raw->picture()->drawing(), Display_282_Byte_Packet(window->session(), 2).words);
  EXPECT_EQ(raw->picture()->drawing()[11].text, "0F37");
}

TEST_F(PacketViews, TheRawViewReachesEveryFrameBeyondTheOldScrollLimit) {
  testing::write_bytes(dir.path("long.css"), std::vector<uint8_t>(282u * 40000u, 0));
  ASSERT_TRUE(window->loadFile(FileFormat::CSS, QString::fromStdString(dir.path("long.css"))));
  auto* raw = static_cast<RawData*>(window->showView(ViewKind::RawData));
  EXPECT_EQ(raw->scrollBar()->maximum(), 40000);
  raw->scrollBar()->setValue(39999);
  EXPECT_EQ(raw->frameLabel(), "Lander packet number 39999");
  raw->scrollBar()->triggerAction(QAbstractSlider::SliderSingleStepAdd);
  EXPECT_EQ(raw->currentFrame(), 40000);
  EXPECT_TRUE(dialogs.messages.empty());
}

TEST_F(PacketViews, TheRawViewPaintsOnlyTheTextsItShows) {
  testing::FrameWriter writer = testing::three_frames();
  ASSERT_TRUE(window->loadFile(FileFormat::CSS, write_frames("t.css", writer)));
  auto* raw = static_cast<RawData*>(window->showView(ViewKind::RawData));
  DrawingView* picture = raw->picture();
  picture->repaint(QRect(0, 0, picture->width(), picture->textRects()[8].top()));
  EXPECT_EQ(picture->textsPainted(), 8);  // the first row
  EXPECT_EQ(picture->textRects()[4].left(), twips_to_pixels(3210, picture->logicalDpiX()));
}

TEST_F(PacketViews, TheConciseViewShowsTheSlotsOfAFrame) {
  testing::FrameWriter writer = testing::three_frames();
  ASSERT_TRUE(window->loadFile(FileFormat::CSS, write_frames("t.css", writer)));
  auto* concise = static_cast<Concise_Form*>(window->showView(ViewKind::Concise));
  EXPECT_EQ(concise->windowTitle(), "Concise Data");
  EXPECT_EQ(concise->frameText(), "1");
  EXPECT_EQ(concise->slotText(0), " Complete HK");
  EXPECT_EQ(concise->slotText(2), " Isotope spectrum ");
  concise->scrollBar()->setValue(2);
  EXPECT_EQ(concise->frameText(), "2");
  EXPECT_EQ(concise->slotText(1), " Acceptance Failure      ");
}

TEST_F(PacketViews, TheConciseViewReportsAFrameThatStartsPastTheEnd) {
  testing::FrameWriter writer = testing::three_frames(280);
  ASSERT_TRUE(window->loadFile(FileFormat::FM, write_frames("t.fm", writer)));  // 840 bytes: four frames
  auto* concise = static_cast<Concise_Form*>(window->showView(ViewKind::Concise));
  concise->scrollBar()->setValue(4);
  ASSERT_EQ(dialogs.messages.size(), 1u);
  EXPECT_TRUE(dialogs.messages[0].startsWith("Input past end of file")) << dialogs.messages[0].toStdString();
  EXPECT_TRUE(dialogs.messages[0].endsWith("; Error number 62"));
  EXPECT_EQ(concise->frameText(), "1");  // the slots keep what they showed
}

TEST_F(PacketViews, PauseAndContinueSwitchTheCollectionTimer) {
  auto* concise = static_cast<Concise_Form*>(window->showView(ViewKind::Concise));
  QPushButton* button = concise->pauseButton();
  EXPECT_EQ(button->text(), "Pause");
  window->collectionTimer()->start();
  button->click();
  EXPECT_FALSE(window->collectionTimer()->isActive());
  EXPECT_EQ(button->text(), "Continue");
  button->click();
  EXPECT_TRUE(window->collectionTimer()->isActive());
  EXPECT_EQ(button->text(), "Pause");
  window->collectionTimer()->stop();
}

// What the packet views show, to compare before and after a switch.
struct Shown {
  Drawing raw;
  QStringList summary;
  QStringList concise;
  std::vector<QPoint> places;
};

TEST_F(PacketViews, SwitchingByteReverseTwiceRestoresTheViewsInTheirPlaces) {
  testing::FrameWriter writer = testing::three_frames();
  ASSERT_TRUE(window->loadFile(FileFormat::CSS, write_frames("t.css", writer)));
  const ViewKind kinds[] = {ViewKind::RawData, ViewKind::Summary, ViewKind::Concise};
  int offset = 0;
  for (const ViewKind kind : kinds) {
    window->showView(kind);
    window->frameOf(window->view(kind))->move(30 + offset, 20 + offset / 2);
    offset += 90;
  }
  auto shown = [&] {
    Shown s;
    s.raw = static_cast<RawData*>(window->view(ViewKind::RawData))->picture()->drawing();
    const auto* summary = static_cast<Summary*>(window->view(ViewKind::Summary));
    for (int row = 0; row < summary->model(2)->rowCount(); ++row) {
      s.summary << summary->model(2)->data(summary->model(2)->index(row)).toString();
    }
    const auto* concise = static_cast<Concise_Form*>(window->view(ViewKind::Concise));
    for (int k = 0; k < kConciseSlots; ++k) s.concise << concise->slotText(k);
    for (const ViewKind kind : kinds) s.places.push_back(window->frameOf(window->view(kind))->pos());
    return s;
  };
  const Shown before = shown();
  window->menuItem("mnuDisplayByteReverse")->trigger();
  EXPECT_FALSE(window->session().Byte_Reverse);
  EXPECT_FALSE(window->menuItem("mnuDisplayByteReverse")->isChecked());
  const Shown reversed = shown();
  EXPECT_EQ(reversed.raw[11].text, "340F");
  EXPECT_EQ(reversed.concise[0], " Unknown ");
  EXPECT_EQ(reversed.summary, before.summary);  // the catalogue is not rebuilt
  EXPECT_EQ(reversed.places, before.places);
  window->menuItem("mnuDisplayByteReverse")->trigger();
  const Shown after = shown();
  EXPECT_EQ(after.raw, before.raw);
  EXPECT_EQ(after.summary, before.summary);
  EXPECT_EQ(after.concise, before.concise);
  EXPECT_EQ(after.places, before.places);
  EXPECT_TRUE(window->menuItem("mnuDisplayByteReverse")->isChecked());
}

}  // namespace
}  // namespace morvane
