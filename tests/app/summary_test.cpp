// SPDX-License-Identifier: MIT
// The summary: its three lists and counts, the double clicks that open an entry's window, and
// the find bar over each list.
#include "summary_view.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListView>
#include <QMdiArea>
#include <QPushButton>
#include <QTabWidget>

#include "app_fixture.h"
#include "housekeeping_form.h"
#include "summary_find_bar.h"
#include "views/summary_lines.h"

namespace morvane {
namespace {

using testing::FrameWriter;
using testing::Packet;

class SummaryView : public testing::AppTest {
 protected:
  Summary* open_summary() {
    EXPECT_TRUE(load_frames(testing::three_frames()));
    return show<Summary>(ViewKind::Summary);
  }
};

TEST_F(SummaryView, ListsEveryEntryOfTheCatalogueWithItsLineAndEveryCount) {
  Summary* summary = show<Summary>(ViewKind::Summary);
  EXPECT_EQ(summary->countText("hk_count"), "0");
  for (int tab = 0; tab < 3; ++tab) EXPECT_EQ(summary->model(tab)->rowCount(), 0);

  summary = open_summary();
  EXPECT_EQ(summary->windowTitle(), "Summary");
  const Catalogue& c = window->session().catalogue;
  using Line = std::string (*)(int32_t, const Packet_Entry&);
  const std::tuple<const char*, const EntryList*, int32_t, Line> lists[] = {
      {"Housekeeping", &c.HK_List, c.HK_Count(), hk_list_line},
      {"Science", &c.Science_List, c.Science_Count(), science_list_line},
      {"Information", &c.Information_List, c.Information_Count(), information_list_line}};
  for (int tab = 0; tab < 3; ++tab) {
    const auto& [title, entries, count, line] = lists[tab];
    EXPECT_EQ(summary->tabs()->tabText(tab), title);
    ASSERT_EQ(summary->model(tab)->rowCount(), count) << title;
    for (int row = 0; row < count; ++row) {
      EXPECT_EQ(summary->model(tab)->data(summary->model(tab)->index(row)).toString().toStdString(),
                line(row + 1, (*entries)[row + 1]));
    }
  }
  EXPECT_TRUE(QFontInfo(summary->list(0)->font()).fixedPitch());
  for (const Summary_Count& count : summary_counts(window->session())) {
    if (!count.key.empty()) {
      EXPECT_EQ(summary->countText(count.key).toStdString(), count.value) << count.key;
    }
  }
  EXPECT_EQ(summary->countText("packet_count"), "3");
}

TEST_F(SummaryView, ADoubleClickOnAHousekeepingLineOpensTheHousekeepingViewInFront) {
  Summary* summary = open_summary();
  testing::double_click(summary->list(0), summary->model(0)->index(1));
  EXPECT_EQ(window->session().Current_HK_Index, 2);
  ChildView* shown = window->view(ViewKind::Housekeeping);
  ASSERT_NE(shown, nullptr);
  EXPECT_EQ(window->mdiArea()->activeSubWindow(), window->frameOf(shown));
}

TEST_F(SummaryView, ScienceLinesOpenTheViewOfTheirLabelInFront) {
  Summary* summary = open_summary();
  // Science entries: auxiliary, isotope, GC spectrum, unknown.
  summary->List2_DblClick(3);
  EXPECT_EQ(window->session().Current_Science_Index, 4);
  EXPECT_EQ(window->view(ViewKind::Auxiliary), nullptr);
  EXPECT_EQ(window->view(ViewKind::Spectra), nullptr);
  summary->List2_DblClick(0);
  EXPECT_NE(window->view(ViewKind::Auxiliary), nullptr);
  EXPECT_EQ(window->view(ViewKind::Spectra), nullptr);
  summary->List2_DblClick(2);  // the GC spectrum
  EXPECT_EQ(window->session().Current_Science_Index, 3);
  ChildView* spectra = window->view(ViewKind::Spectra);
  ASSERT_NE(spectra, nullptr);
  EXPECT_EQ(window->mdiArea()->activeSubWindow(), window->frameOf(spectra));
  // Another spectrum goes to the same window and brings it back to the front.
  window->showView(ViewKind::Summary);
  EXPECT_NE(window->mdiArea()->activeSubWindow(), window->frameOf(spectra));
  summary->List2_DblClick(1);
  EXPECT_EQ(window->view(ViewKind::Spectra), spectra);
  EXPECT_EQ(window->mdiArea()->activeSubWindow(), window->frameOf(spectra));
  EXPECT_EQ(window->session().Current_Science_Index, 2);
}

TEST_F(SummaryView, ALineWhoseNumbersDoNotFitShowsTheErrorInRed) {
  ASSERT_TRUE(load_packets({Packet{0x0F37, 5, 11, 0x7000, 1, {{14, 0x0100}}, {}}}));  // time 1879048193
  const SummaryListModel* information = show<Summary>(ViewKind::Summary)->model(2);
  EXPECT_TRUE(information->data(information->index(0)).toString().contains("Error number 5"));
  EXPECT_EQ(information->data(information->index(0), Qt::ForegroundRole).value<QColor>(), QColor(Qt::red));
  EXPECT_FALSE(information->data(information->index(1)).toString().contains("Error"));
}

using Field = Summary_Find_Bar::Field;

// Frame f holds housekeeping packet f (complete when f is even, concise when odd) with
// sequence count f and lander time 100 + 10 f, and a progress event.
FrameWriter numbered_frames(int last) {
  FrameWriter writer(282);
  for (int f = 1; f <= last; ++f) {
    writer.add_frame({Packet{0x0F34, f, 51, 0, 100 + 10 * f, {{16, f % 2 == 0 ? 2 : 1}}, {}},
                      Packet{0x0F37, f, 11, 0, 100 + 10 * f, {{14, 0x0100}}, {}}});
  }
  return writer;
}

class SummaryFind : public testing::AppTest {
 protected:
  void open_summary() {
    EXPECT_TRUE(load_frames(numbered_frames(40)));
    find_in_summary();
  }
  void find_in_summary() {
    summary = show<Summary>(ViewKind::Summary);
    bar = summary->findBar(0);
  }
  void choose_label(const QString& text) {
    bar->refreshLabels();
    bar->labelChoice()->setCurrentIndex(bar->labelChoice()->findText(text));
  }
  void type(Field field, const QString& text) { bar->field(field)->setText(text); }
  bool done() {
    return testing::wait_until([&] { return !bar->searching(); });
  }
  // The entry number of the selected line of the housekeeping list, 0 when none.
  int32_t selected() const {
    const QModelIndex current = summary->list(0)->currentIndex();
    return current.isValid() ? summary->model(0)->entryNumber(current.row()) : 0;
  }
  QString line(int row) const { return summary->model(0)->data(summary->model(0)->index(row)).toString(); }

  Summary* summary = nullptr;
  Summary_Find_Bar* bar = nullptr;
};

TEST_F(SummaryFind, EveryFieldIsAConditionThatMustHoldAndTheCountSaysHowManyMatch) {
  open_summary();
  bar->refreshLabels();
  QStringList offered;
  for (int i = 0; i < bar->labelChoice()->count(); ++i) offered << bar->labelChoice()->itemText(i);
  EXPECT_EQ(offered, (QStringList{"All types", "Concise", "Complete"}));
  summary->findBar(2)->refreshLabels();
  EXPECT_EQ(summary->findBar(2)->labelChoice()->itemText(1), "Normal Progress Event");

  EXPECT_EQ(bar->countText(), "");  // no conditions
  choose_label("Complete");
  ASSERT_TRUE(done());
  EXPECT_EQ(bar->countText(), "20 of 40");
  EXPECT_EQ(summary->model(0)->rowCount(), 40);  // finding hides nothing
  const std::tuple<Field, const char*, const char*> steps[] = {
      {Field::SequenceFrom, "10", "16 of 40"}, {Field::SequenceTo, "20", "6 of 40"},  // 10, 12, ..., 20
      {Field::TimeFrom, "250", "3 of 40"},                                            // frames 15 and up
      {Field::FrameTo, "17", "1 of 40"},       {Field::FrameFrom, "30", "0 of 40"},
      {Field::FrameFrom, "-", "1 of 40"},  // a field that holds no number yet leaves its end open
      {Field::TimeTo, "260", "1 of 40"},       {Field::TimeTo, "259", "0 of 40"}};
  for (const auto& [field, text, count] : steps) {
    type(field, text);
    ASSERT_TRUE(done());
    EXPECT_EQ(bar->countText(), count) << text;
  }
}

TEST_F(SummaryFind, OnlyMatchesHidesTheOtherLinesWhichKeepTheirEntryNumbersUntilCleared) {
  open_summary();
  choose_label("Complete");
  type(Field::SequenceFrom, "31");
  bar->onlyMatches()->setChecked(true);
  ASSERT_TRUE(done());
  ASSERT_EQ(summary->model(0)->rowCount(), 5);  // 32, 34, ..., 40
  EXPECT_TRUE(line(0).startsWith("32      ")) << line(0).toStdString();
  EXPECT_TRUE(line(4).startsWith("40      "));
  EXPECT_EQ(bar->countText(), "5 of 40");
  EXPECT_EQ(summary->model(2)->rowCount(), 80);  // each list is filtered on its own
  bar->onlyMatches()->setChecked(false);
  EXPECT_EQ(summary->model(0)->rowCount(), 40);

  bar->onlyMatches()->setChecked(true);
  bar->clearButton()->click();
  EXPECT_EQ(summary->model(0)->rowCount(), 40);
  EXPECT_EQ(bar->countText(), "");
  EXPECT_EQ(bar->labelChoice()->currentIndex(), 0);
  EXPECT_TRUE(bar->field(Field::SequenceFrom)->text().isEmpty());
  EXPECT_EQ(line(39).left(2), "40");
}

TEST_F(SummaryFind, EnterSelectsTheNextMatchAndGoesRound) {
  open_summary();
  choose_label("Complete");
  type(Field::SequenceFrom, "10");
  type(Field::SequenceTo, "14");
  ASSERT_TRUE(done());
  for (const int32_t expected : {10, 12, 14, 10}) {
    QTest::keyClick(bar->field(Field::SequenceTo), Qt::Key_Return);
    EXPECT_EQ(selected(), expected);
  }
  // From a line chosen by hand the next match after it.
  summary->list(0)->setCurrentIndex(summary->model(0)->index(10));  // entry 11
  bar->nextButton()->click();
  EXPECT_EQ(selected(), 12);
  // Filtered, Enter steps through the lines shown, keeping the selected entry.
  bar->onlyMatches()->setChecked(true);
  EXPECT_EQ(selected(), 12);
  QTest::keyClick(bar->labelChoice(), Qt::Key_Return);
  EXPECT_EQ(selected(), 14);
  QTest::keyClick(bar->labelChoice(), Qt::Key_Enter);
  EXPECT_EQ(selected(), 10);
}

TEST_F(SummaryFind, AFindWaitsForItsMatchWhileTheSearchGoesOn) {
  open_summary();
  bar->setSlice(4, 0);  // four entries a slice: the search takes ten turns of the event loop
  type(Field::SequenceFrom, "37");
  EXPECT_TRUE(bar->searching());
  EXPECT_EQ(bar->countText(), "0 of 40...");
  bar->findNext();
  EXPECT_EQ(selected(), 0);  // not found yet
  ASSERT_TRUE(done());
  EXPECT_EQ(selected(), 37);
  EXPECT_EQ(bar->countText(), "4 of 40");
  // Changing the conditions mid-way starts the search again.
  type(Field::SequenceFrom, "3");
  type(Field::SequenceTo, "3");
  ASSERT_TRUE(done());
  EXPECT_EQ(summary->model(0)->matches(), (std::vector<int32_t>{3}));
}

TEST_F(SummaryFind, ADoubleClickOnAFilteredLineOpensItsEntry) {
  open_summary();
  choose_label("Complete");
  type(Field::SequenceFrom, "20");
  bar->onlyMatches()->setChecked(true);
  ASSERT_TRUE(done());
  testing::double_click(summary->list(0), summary->model(0)->index(1));  // entry 22
  EXPECT_EQ(window->session().Current_HK_Index, 22);
  EXPECT_EQ(shown<Housekeeping_form>(ViewKind::Housekeeping)->headerText("HK Packet number"), "22");
  // The information list, filtered too, opens its own entries.
  Summary_Find_Bar* information = summary->findBar(2);
  information->field(Field::FrameFrom)->setText("33");
  information->onlyMatches()->setChecked(true);
  ASSERT_TRUE(testing::wait_until([&] { return !information->searching(); }));
  emit summary->list(2)->doubleClicked(summary->model(2)->index(0));
  EXPECT_EQ(window->session().Current_Information_Index, 65);  // frame 33's progress event
}

TEST_F(SummaryFind, LiveFollowFiltersTheEntriesAsTheyArrive) {
  write_log(numbered_frames(4));
  window->startCollection();
  find_in_summary();
  choose_label("Complete");
  bar->onlyMatches()->setChecked(true);
  ASSERT_TRUE(done());
  EXPECT_EQ(summary->model(0)->rowCount(), 2);
  grow_log(numbered_frames(11));
  EXPECT_EQ(summary->model(0)->rowCount(), 5);  // 2, 4, ..., 10, tested as they came
  EXPECT_EQ(bar->countText(), "5 of 11");
  EXPECT_TRUE(line(4).startsWith("10      "));
  bar->clear();  // without the filter every line that arrived is there
  EXPECT_EQ(summary->model(0)->rowCount(), 11);
}

}  // namespace
}  // namespace morvane
