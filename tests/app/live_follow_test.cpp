// SPDX-License-Identifier: MIT
// Real-time collection: the log followed, with a main window and (LiveFollowAlone) without.
#include <filesystem>

#include "app_fixture.h"
#include "core/error.h"
#include "housekeeping_form.h"
#include "live_follow.h"
#include "raw_view.h"
#include "summary_view.h"

namespace morvane {
namespace {

using testing::FrameWriter, testing::Packet;

// hk_frames frames of a complete housekeeping packet and an event, then frames of an event only.
FrameWriter frames(int hk_frames, int event_frames = 0) {
  FrameWriter writer(282);
  for (int f = 1; f <= hk_frames + event_frames; ++f) {
    const Packet event{testing::kEventId, f, 11, 0, 100 + f, {{14, 0x0100}}, {}};
    if (f > hk_frames) writer.add_frame({event});
    else writer.add_frame({testing::labelled(LabelCode::Complete, f, 51, 100 + f), event});
  }
  return writer;
}

using LiveFollowTest = testing::AppTest;

TEST_F(LiveFollowTest, TheMenuItemStartsAndStopsCollectionWhoseNewFramesReachTheViewsAndWhoseLogIsWaitedFor) {
  QAction* item = window->menu_item("mnuDisplayRealTimeDataCollection");
  write_log(frames(2));
  item->trigger();
  EXPECT_TRUE(item->isChecked());
  EXPECT_TRUE(window->collection_timer()->isActive());
  EXPECT_EQ(window->windowTitle(), QString::fromStdString("Morvane EGSE             File loaded - " + log()));
  EXPECT_EQ(window->session().Packet_Count, 2);
  item->trigger();
  EXPECT_FALSE(window->collection_timer()->isActive());
  EXPECT_EQ(window->session().catalogue.HK_Count(), 2);  // kept for browsing

  write_log(frames(4));
  item->trigger();
  EXPECT_EQ(window->session().catalogue.HK_Count(), 4);
  EXPECT_EQ(window->session().catalogue.counters.Complete_Count(), 4);  // counted once
  item->trigger();

  // How the log grows or shrinks between passes is LiveFollowAlone's; here, what the views show.
  write_log(frames(2));
  window->start_collection();
  auto* raw = show<RawData>(ViewKind::RawData);
  auto* summary = show<Summary>(ViewKind::Summary);
  auto* housekeeping = show<Housekeeping_form>(ViewKind::Housekeeping);
  QSignalSpy inserted(summary->model(0), &QAbstractItemModel::rowsInserted);

  grow_log(frames(5));
  EXPECT_EQ(raw->frame_label(), "Lander packet number 5");
  ASSERT_EQ(inserted.count(), 1);
  EXPECT_EQ(inserted[0][1].toInt(), 2);  // only the new entries, rows 3..5
  EXPECT_EQ(inserted[0][2].toInt(), 4);
  EXPECT_EQ(summary->count_text("packet_count"), "5");
  EXPECT_EQ(housekeeping->scroll_bar()->value(), 5);  // the newest packet

  housekeeping->more_button()->click();  // frames without housekeeping leave its page alone
  grow_log(frames(5, 1));
  EXPECT_TRUE(housekeeping->showing_registers());
  grow_log(frames(7));
  EXPECT_EQ(inserted.count(), 2);
  EXPECT_EQ(housekeeping->header_text("HK Packet number"), "6");
  EXPECT_FALSE(housekeeping->showing_registers());

  std::filesystem::remove(log());
  window->Timer1_Timer();
  window->Timer1_Timer();  // said once
  EXPECT_TRUE(one_message("The log file ", "was deleted: collection waits for it to return"));
  EXPECT_TRUE(window->live_follow().waiting());
  EXPECT_TRUE(window->is_collecting());
  EXPECT_EQ(window->session().Packet_Count, 7);  // the catalogue stays for browsing

  grow_log(frames(1));
  ASSERT_EQ(dialogs.messages.size(), 2u);
  EXPECT_TRUE(dialogs.messages[1].contains("is back: collection starts again from its first frame"));
  EXPECT_FALSE(window->live_follow().waiting());
  EXPECT_EQ(window->session().Packet_Count, 1);
  grow_log(frames(2));
  EXPECT_EQ(window->session().Packet_Count, 2);
}

// LiveFollow on its own: a session, dialogs and the two hooks a main window gives it.
class LiveFollowAlone : public ::testing::Test {
 protected:
  void SetUp() override {
    QSettings().clear();
    session.config = load_configuration(sim::write_configuration(dir.path("base")));
    LiveFollow::Hooks hooks;
    hooks.load_log = [this](const QString& path) {
      ++loads;
      if (!std::filesystem::exists(path.toStdString())) return false;  // as a failed load: nothing changes
      Session fresh;
      fresh.config = session.config;
      fresh.Byte_Reverse = true;
      load_telemetry(fresh, path.toStdString(), FileFormat::CSS);
      session = std::move(fresh);
      return true;
    };
    hooks.update_views = [this] {
      updates.push_back(session.Packet_Count);
      if (fail_update) morvane::raise(ErrorNumber::DeviceIoError, "view");
    };
    hooks.busy = [this] { return busy; };
    follow = new LiveFollow(session, dialogs, window, std::move(hooks));
    follow->set_log_file(QString::fromStdString(log()));
    QObject::connect(follow, &LiveFollow::collecting_changed, [this](bool collecting) { on.push_back(collecting); });
  }

  std::string log() const { return dir.path("tmlog.dat"); }
  // The ground station writes the log anew in place (the same file).
  void write_log(int count) { testing::write_bytes(log(), frames(count).bytes()); }

  testing::TempDir dir;
  testing::FakeDialogs dialogs;
  QWidget window;
  Session session;
  LiveFollow* follow = nullptr;
  int loads = 0;
  std::vector<int32_t> updates;  // the frame count each update of the views saw
  std::vector<bool> on;  // each change of collecting, as signalled
  bool busy = false, fail_update = false;
};

TEST_F(LiveFollowAlone, AShrunkLogIsIgnoredUntilItGrowsPastTheFramesSeenAndANewFileIsLoadedAfresh) {
  write_log(4);
  follow->start();
  write_log(2);  // rewritten shorter in place
  follow->Timer1_Timer();
  write_log(4);
  follow->Timer1_Timer();
  EXPECT_TRUE(updates.empty());
  EXPECT_EQ(session.Packet_Count, 4);
  write_log(6);
  follow->Timer1_Timer();
  EXPECT_EQ(updates, std::vector<int32_t>{6});
  EXPECT_EQ(session.catalogue.HK_Count(), 6);
  EXPECT_EQ(session.catalogue.Previous_Packet_Count, 6);
  EXPECT_EQ(loads, 1);

  testing::write_bytes(dir.path("new.dat"), frames(2).bytes());
  std::filesystem::rename(dir.path("new.dat"), log());
  follow->Timer1_Timer();
  EXPECT_EQ(loads, 2);
  EXPECT_EQ(session.Packet_Count, 2);
  EXPECT_TRUE(follow->collecting());
  ASSERT_EQ(dialogs.messages.size(), 1u);
  EXPECT_TRUE(dialogs.messages[0].contains("was replaced by a new file: collection starts again from its first frame"));
  write_log(3);  // the new file is the one followed now: it grows as any other
  follow->Timer1_Timer();
  EXPECT_EQ(updates, (std::vector<int32_t>{6, 3}));  // the load rebuilt the views: its pass added nothing
  EXPECT_EQ(loads, 2);
  EXPECT_EQ(dialogs.messages.size(), 1u);
}

TEST_F(LiveFollowAlone, AStartThatCannotLoadKeepsTheStateAPassWaitsForALoadAndAFailingPassStopsFirst) {
  follow->toggle();  // no log yet
  EXPECT_FALSE(follow->collecting());
  EXPECT_FALSE(follow->timer()->isActive());

  write_log(3);
  follow->toggle();
  std::filesystem::remove(log());
  follow->start();  // as a replaced log starts collection again
  EXPECT_TRUE(follow->collecting());
  EXPECT_TRUE(follow->timer()->isActive());
  EXPECT_EQ(session.Packet_Count, 3);
  follow->toggle();
  EXPECT_FALSE(follow->timer()->isActive());
  EXPECT_EQ(loads, 3);

  // A pass waits for a load; a failing pass stops collection before its message.
  write_log(1);
  follow->start();
  write_log(2);
  busy = true;
  follow->Timer1_Timer();
  EXPECT_EQ(session.Packet_Count, 1);
  busy = false;

  dialogs.on_message = [&] { EXPECT_FALSE(follow->timer()->isActive()); };
  fail_update = true;
  follow->Timer1_Timer();
  EXPECT_FALSE(follow->collecting());
  EXPECT_EQ(on, (std::vector<bool>{false, true, true, false, true, false}));
  ASSERT_EQ(dialogs.messages.size(), 1u);
  EXPECT_TRUE(dialogs.messages[0].endsWith("Error number 57"));
}

}  // namespace
}  // namespace morvane
