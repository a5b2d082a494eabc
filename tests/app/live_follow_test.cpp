// SPDX-License-Identifier: MIT
#include <QScrollBar>
#include <QSignalSpy>
#include <QTimer>

#include "app_fixture.h"
#include "concise_view.h"
#include "core/windows_path.h"
#include "raw_view.h"
#include "settings.h"
#include "summary_view.h"

namespace morvane {
namespace {

using testing::FrameWriter;
using testing::Packet;

// A log file that the test writes frame by frame, as the ground station does.
class LiveFollow : public testing::AppTest {
 protected:
  void SetUp() override {
    AppTest::SetUp();
    log = dir.path("tmlog.dat");
    window->setLogFile(QString::fromStdString(log));
  }
  // Rewrites the log with the first n frames of a run of frames, each a housekeeping packet
  // and an event.
  void write_log(int n) {
    FrameWriter writer(282);
    for (int f = 1; f <= n; ++f) {
      writer.add_frame({Packet{0x0F34, f, 51, 0, 100 + f, {{16, 1}}, {}}, Packet{0x0F37, f, 11, 0, 100 + f, {{14, 0x0100}}, {}}});
    }
    testing::write_bytes(log, writer.bytes());
  }
  std::string log;
};

TEST_F(LiveFollow, StartingCataloguesTheLogAndChecksTheItem) {
  write_log(2);
  window->menuItem("mnuDisplayRealTimeDataCollection")->trigger();
  EXPECT_TRUE(window->isCollecting());
  EXPECT_TRUE(window->collectionTimer()->isActive());
  EXPECT_EQ(window->collectionTimer()->interval(), 500);
  EXPECT_EQ(window->windowTitle(), QString::fromStdString("Morvane EGSE             File loaded - " + log));
  EXPECT_EQ(window->session().File_Type, FileFormat::CSS);
  EXPECT_EQ(window->session().Packet_Count, 2);
  window->menuItem("mnuDisplayRealTimeDataCollection")->trigger();
  EXPECT_FALSE(window->isCollecting());
  EXPECT_FALSE(window->collectionTimer()->isActive());
  EXPECT_EQ(window->session().catalogue.HK_Count(), 2);  // kept for browsing
}

TEST_F(LiveFollow, NewFramesReachTheOpenViewsAndAShrunkLogIsIgnoredUntilItGrowsPast) {
  write_log(2);
  window->startCollection();
  auto* raw = static_cast<RawData*>(window->showView(ViewKind::RawData));
  auto* summary = static_cast<Summary*>(window->showView(ViewKind::Summary));
  auto* concise = static_cast<Concise_Form*>(window->showView(ViewKind::Concise));
  QSignalSpy inserted(summary->model(0), &QAbstractItemModel::rowsInserted);

  write_log(5);
  window->Timer1_Timer();
  EXPECT_EQ(window->session().Packet_Count, 5);
  EXPECT_EQ(raw->frameLabel(), "Lander packet number 5");
  EXPECT_EQ(raw->countLabel(), "Number of Lander packets = 5");
  EXPECT_EQ(concise->frameText(), "5");
  EXPECT_EQ(concise->slotText(0), " Concise HK ");
  ASSERT_EQ(inserted.count(), 1);
  EXPECT_EQ(inserted[0][1].toInt(), 2);  // only the new entries, rows 3..5
  EXPECT_EQ(inserted[0][2].toInt(), 4);
  EXPECT_EQ(summary->countText("packet_count"), "5");
  EXPECT_EQ(window->session().catalogue.Previous_Packet_Count, 5);

  write_log(1);  // rewritten shorter
  window->Timer1_Timer();
  write_log(4);
  window->Timer1_Timer();
  EXPECT_EQ(window->session().Packet_Count, 5);
  EXPECT_EQ(inserted.count(), 1);
  write_log(6);
  window->Timer1_Timer();
  EXPECT_EQ(window->session().Packet_Count, 6);
  EXPECT_EQ(window->session().catalogue.HK_Count(), 6);
  EXPECT_EQ(inserted.count(), 2);
  EXPECT_TRUE(dialogs.messages.empty());
}

TEST_F(LiveFollow, TheTimerFollowsALogThatStartsEmpty) {
  write_log(0);
  window->startCollection();
  EXPECT_EQ(window->session().Packet_Count, 0);
  auto* raw = static_cast<RawData*>(window->showView(ViewKind::RawData));
  // A frame still being written counts whole and is catalogued from the bytes present.
  std::vector<uint8_t> partial(24, 0);
  partial[22] = 0x34;
  partial[23] = 0x0F;
  testing::write_bytes(log, partial);
  EXPECT_TRUE(testing::wait_until([&] { return window->session().Packet_Count == 1; }));
  EXPECT_EQ(raw->frameLabel(), "Lander packet number 1");
  EXPECT_EQ(window->session().catalogue.HK_Count(), 1);
}

TEST_F(LiveFollow, StoppingAndRestartingStartsAgainFromTheFirstFrame) {
  write_log(3);
  window->startCollection();
  write_log(4);
  window->Timer1_Timer();
  window->stopCollection();
  window->startCollection();
  EXPECT_EQ(window->session().catalogue.HK_Count(), 4);
  EXPECT_EQ(window->session().catalogue.Previous_Packet_Count, 4);
  EXPECT_EQ(window->session().catalogue.counters.Concise_Count, 4);
}

TEST_F(LiveFollow, AMissingLogIsReportedAndCollectionDoesNotStart) {
  window->startCollection();
  ASSERT_EQ(dialogs.messages.size(), 1u);
  EXPECT_EQ(dialogs.messages[0].toStdString(), "File not found: " + log + "; Error number 53");
  EXPECT_FALSE(window->isCollecting());
  EXPECT_FALSE(window->collectionTimer()->isActive());
  EXPECT_EQ(window->windowTitle(), "Morvane EGSE");
}

TEST_F(LiveFollow, TheLogPathDefaultsToTheStationsAndIsRemembered) {
  QSettings().clear();
  EXPECT_EQ(window->logFile(), "c:\\windows\\desktop\\ZEB - CDMS\\tmlog.dat");
  dialogs.files.push_back(QString::fromStdString(log));
  window->menuItem("mnuDisplayRealTimeLogFile")->trigger();
  EXPECT_EQ(log_file_setting().toStdString(), log);
  // The default is found like a configuration path: from the working folder, any letter case.
  EXPECT_EQ(resolve_windows_path(kDefaultLogFile), resolve_windows_path("c:/windows/desktop/ZEB - CDMS/tmlog.dat"));
}

}  // namespace
}  // namespace morvane
