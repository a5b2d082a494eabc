// SPDX-License-Identifier: MIT
// The view manager: rebuilds and updates in the legacy order, calibration changes in kind order.
#include "app_fixture.h"
#include "child_view.h"
#include "core/error.h"
#include "view_manager.h"
#include "workstation.h"

namespace morvane {
namespace {

// A window that writes each hook it receives into a shared journal: "Summary made", ...
class JournalView : public ChildView {
 public:
  JournalView(Workstation& workstation, ViewKind kind, std::vector<std::string>& journal)
      : ChildView(workstation, kind), journal_(journal) { note("made"); }
  void update_realtime() override { note("update"); }
  void show_current_entry() override { note("entry"); }
  void session_reloaded() override { note("reloaded"); }
  void calibration_changed(CalibrationTable t) override { note(t == CalibrationTable::AD590 ? "AD590" : "pressure"); }

 private:
  void note(const char* what) { journal_.push_back(std::string(view_name(kind())) + ' ' + what); }
  std::vector<std::string>& journal_;
};

// The main window's view manager with a journal window registered for every kind but one.
class ViewManagerTest : public testing::AppTest {
 protected:
  void SetUp() override {
    AppTest::SetUp();
    for (const ViewKind kind : kAllViewKinds) {
      if (kind == ViewKind::Campaign) continue;  // left as it is
      views().register_view(kind, [this, kind](Workstation& w) { return new JournalView(w, kind, journal); });
    }
  }
  ViewManager& views() const { return window->views(); }
  // Opens the windows in this order, then forgets what their making wrote.
  void open(std::initializer_list<ViewKind> kinds) {
    for (const ViewKind kind : kinds) ASSERT_NE(views().show_view(kind), nullptr);
    journal.clear();
  }

  std::vector<std::string> journal;
};

TEST_F(ViewManagerTest, AReloadRebuildsAndAPassUpdatesTheOpenViewsInTheLegacyOrderThenTellsTheWindowsItKeeps) {
  open({ViewKind::Integrity, ViewKind::Housekeeping, ViewKind::Auxiliary, ViewKind::Trend, ViewKind::Summary,
        ViewKind::RawData});
  ChildView* auxiliary = views().view(ViewKind::Auxiliary);
  ChildView* trend = views().view(ViewKind::Trend);
  ViewManager::frame_of(views().view(ViewKind::Summary))->setGeometry(40, 50, 300, 200);

  views().Reload_Open_Views();
  // The concise view is not open: it is not made. The auxiliary view is neither rebuilt nor told.
  EXPECT_EQ(journal, (std::vector<std::string>{"RawData made", "Summary made", "Housekeeping_form made",
                                               "Trend_Plot reloaded", "Data_Integrity reloaded"}));
  EXPECT_EQ(views().view(ViewKind::Auxiliary), auxiliary);
  EXPECT_EQ(views().view(ViewKind::Trend), trend);
  EXPECT_EQ(ViewManager::frame_of(views().view(ViewKind::Summary))->geometry(), QRect(40, 50, 300, 200));
  EXPECT_EQ(window->mdi_area()->subWindowList().size(), 6);

  // A collection pass updates them in the same order; the auxiliary and information views are not told.
  open({ViewKind::Concise, ViewKind::Information});
  views().Update_Open_Views();
  EXPECT_EQ(journal, (std::vector<std::string>{"RawData update", "Summary update", "Concise_Form update",
                                               "Housekeeping_form update", "Trend_Plot update",
                                               "Data_Integrity update"}));
}

TEST_F(ViewManagerTest, ACalibrationChangeReachesTheOpenWindowsHousekeepingFirst) {
  open({ViewKind::Auxiliary, ViewKind::PressureCalibration, ViewKind::Housekeeping});
  window->workstation().announce_calibration_change(CalibrationTable::PressureSensors);
  window->workstation().announce_calibration_change(CalibrationTable::AD590);
  EXPECT_EQ(journal, (std::vector<std::string>{"Housekeeping_form pressure", "Auxiliary_form pressure",
                                               "Calibration pressure", "Housekeeping_form AD590",
                                               "Auxiliary_form AD590", "Calibration AD590"}));
}

TEST_F(ViewManagerTest, AKindWithoutAWindowIsAPlaceholderAndAWindowThatFailsToOpenLeavesNothingOpen) {
  QMdiArea area;
  ViewManager bare(window->workstation(), area);
  ChildView* placeholder = bare.show_view(ViewKind::Spectra);
  ASSERT_NE(placeholder, nullptr);
  EXPECT_EQ(placeholder->kind(), ViewKind::Spectra);
  EXPECT_EQ(bare.show_view(ViewKind::Campaign), nullptr);

  views().register_view(ViewKind::Summary, [](Workstation&) -> ChildView* {
    morvane::raise(ErrorNumber::FileNotFound, "summary.dat");
  });
  EXPECT_EQ(views().show_view(ViewKind::Summary), nullptr);
  EXPECT_TRUE(one_message("File not found"));
  EXPECT_EQ(views().view(ViewKind::Summary), nullptr);
  EXPECT_TRUE(window->mdi_area()->subWindowList().isEmpty());
}

}  // namespace
}  // namespace morvane
