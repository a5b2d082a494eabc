// SPDX-License-Identifier: MIT
#include "summary_view.h"

#include <QLabel>
#include <QListView>
#include <QMdiArea>
#include <QTabWidget>
#include <QTest>

#include "app_fixture.h"
#include "information_form.h"
#include "views/summary_lines.h"

namespace morvane {
namespace {

// Counts how often the summary asked it to show the current entry.
class EntryView : public ChildView {
 public:
  EntryView(EGSE_MDI& mdi, ViewKind kind) : ChildView(mdi, kind) {}
  void showCurrentEntry() override { ++shown; }
  int shown = 0;
};

class SummaryView : public testing::AppTest {
 protected:
  Summary* open_summary() {
    testing::FrameWriter writer = testing::three_frames();
    EXPECT_TRUE(window->loadFile(FileFormat::CSS, write_frames("t.css", writer)));
    return static_cast<Summary*>(window->showView(ViewKind::Summary));
  }
  static QString line(const Summary* summary, int tab, int row) {
    return summary->model(tab)->data(summary->model(tab)->index(row)).toString();
  }
};

TEST_F(SummaryView, ListsEveryEntryInCatalogueOrderWithItsLine) {
  const Summary* summary = open_summary();
  EXPECT_EQ(summary->windowTitle(), "Summary");
  const QStringList tabs = {summary->tabs()->tabText(0), summary->tabs()->tabText(1), summary->tabs()->tabText(2)};
  EXPECT_EQ(tabs, (QStringList{"Housekeeping", "Science", "Information"}));
  const Catalogue& c = window->session().catalogue;
  const int expected_rows[] = {c.HK_Count(), c.Science_Count(), c.Information_Count()};
  for (int tab = 0; tab < 3; ++tab) EXPECT_EQ(summary->model(tab)->rowCount(), expected_rows[tab]) << tab;
  EXPECT_EQ(line(summary, 0, 1).toStdString(), hk_list_line(2, c.HK_List[2]));
  EXPECT_EQ(line(summary, 1, 1).toStdString(), "2        Isotope spectrum         8       1002        1   Start   End");
  EXPECT_EQ(line(summary, 2, 2).toStdString(), information_list_line(3, c.Information_List[3]));
  EXPECT_TRUE(summary->list(0)->uniformItemSizes());
  EXPECT_TRUE(summary->list(0)->font().fixedPitch() || QFontInfo(summary->list(0)->font()).fixedPitch());
}

TEST_F(SummaryView, EveryCountShowsItsValueAndCompactPacketsDoNotApply) {
  const Summary* summary = open_summary();
  for (const Summary_Count& count : summary_counts(window->session())) {
    if (!count.key.empty()) {
      EXPECT_EQ(summary->countText(count.key).toStdString(), count.value) << count.key;
    }
  }
  EXPECT_EQ(summary->countText("packet_count"), "3");
  EXPECT_EQ(summary->countText("hk_count"), "2");
  EXPECT_EQ(summary->countText("compact_count"), "- N/A -");
  EXPECT_EQ(summary->countText("memory_checksum_count"), "0");
}

TEST_F(SummaryView, WithNoFileTheCountsAreZeroAndTheListsEmpty) {
  const auto* summary = static_cast<Summary*>(window->showView(ViewKind::Summary));
  EXPECT_EQ(summary->countText("hk_count"), "0");
  for (int tab = 0; tab < 3; ++tab) EXPECT_EQ(summary->model(tab)->rowCount(), 0);
}

TEST_F(SummaryView, ADoubleClickOnAHousekeepingLineOpensTheHousekeepingView) {
  Summary* summary = open_summary();
  QListView* list = summary->list(0);
  ASSERT_TRUE(QTest::qWaitForWindowExposed(list->window()));
  QApplication::processEvents();
  const QRect line_rect = list->visualRect(summary->model(0)->index(1));
  // As from a mouse: the first click, then the second press that makes it double.
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, line_rect.center());
  QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, line_rect.center());
  EXPECT_EQ(window->session().Current_HK_Index, 2);
  ChildView* shown = window->view(ViewKind::Housekeeping);
  ASSERT_NE(shown, nullptr);
  EXPECT_EQ(window->mdiArea()->activeSubWindow(), window->frameOf(shown));
}

TEST_F(SummaryView, ScienceLinesOpenTheirViewByLabel) {
  Summary* summary = open_summary();
  // Science entries: auxiliary, isotope, GC spectrum, unknown.
  summary->List2_DblClick(3);
  EXPECT_EQ(window->session().Current_Science_Index, 4);
  EXPECT_EQ(window->view(ViewKind::Auxiliary), nullptr);
  EXPECT_EQ(window->view(ViewKind::Spectra), nullptr);
  summary->List2_DblClick(0);
  EXPECT_NE(window->view(ViewKind::Auxiliary), nullptr);
  EXPECT_EQ(window->view(ViewKind::Spectra), nullptr);
  summary->List2_DblClick(2);
  EXPECT_EQ(window->session().Current_Science_Index, 3);
  EXPECT_NE(window->view(ViewKind::Spectra), nullptr);
}

TEST_F(SummaryView, InformationLinesOpenTheInformationView) {
  Summary* summary = open_summary();
  summary->List3_DblClick(1);
  EXPECT_EQ(window->session().Current_Information_Index, 2);
  auto* form = dynamic_cast<Information_Form*>(window->view(ViewKind::Information));
  ASSERT_NE(form, nullptr);
  EXPECT_EQ(form->label(3)->text(), "Information Pkt 2");
}

TEST_F(SummaryView, ARegisteredViewIsOpenedOnceAndAskedForEachEntry) {
  window->registerView(ViewKind::Housekeeping, [](EGSE_MDI& mdi) { return new EntryView(mdi, ViewKind::Housekeeping); });
  Summary* summary = open_summary();
  summary->List1_DblClick(0);
  auto* view = dynamic_cast<EntryView*>(window->view(ViewKind::Housekeeping));
  ASSERT_NE(view, nullptr);
  summary->List1_DblClick(1);
  EXPECT_EQ(window->view(ViewKind::Housekeeping), view);
  EXPECT_EQ(view->shown, 2);
  EXPECT_EQ(window->session().Current_HK_Index, 2);
}

TEST_F(SummaryView, ALineWhoseNumbersDoNotFitShowsTheErrorInRed) {
  testing::FrameWriter writer(282);
  writer.add_frame({testing::Packet{0x0F37, 5, 11, 0x7000, 1, {{14, 0x0100}}, {}}});  // time 1879048193
  ASSERT_TRUE(window->loadFile(FileFormat::CSS, write_frames("t.css", writer)));
  const auto* summary = static_cast<Summary*>(window->showView(ViewKind::Summary));
  const QModelIndex index = summary->model(2)->index(0);
  EXPECT_TRUE(summary->model(2)->data(index).toString().contains("Error number 5"));
  EXPECT_EQ(summary->model(2)->data(index, Qt::ForegroundRole).value<QColor>(), QColor(Qt::red));
  EXPECT_FALSE(summary->model(2)->data(summary->model(2)->index(1)).toString().contains("Error"));
}

}  // namespace
}  // namespace morvane
