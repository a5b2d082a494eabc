// SPDX-License-Identifier: MIT
// The summary: its three lists and counts, the double clicks that open an entry's window, and
// the find bar's conditions.
#include "summary_view.h"

#include <QComboBox>
#include <QLineEdit>
#include <QListView>
#include <QMdiArea>
#include <QTabWidget>

#include "app_fixture.h"
#include "summary_find_bar.h"
#include "decoders/summary_lines.h"

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

TEST_F(SummaryView, ListsTheCatalogueInThreeTabsWithTheDecodersLines) {
  Summary* summary = show<Summary>(ViewKind::Summary);
  EXPECT_EQ(summary->count_text("hk_count"), "0");
  for (int tab = 0; tab < 3; ++tab) EXPECT_EQ(summary->model(tab)->rowCount(), 0);

  summary = open_summary();
  EXPECT_EQ(summary->windowTitle(), "Summary");
  const Catalogue& c = window->session().catalogue;
  const QStringList titles{"Housekeeping", "Science", "Information"};
  const int32_t counts[] = {c.HK_Count(), c.Science_Count(), c.Information_Count()};
  for (int tab = 0; tab < 3; ++tab) {
    EXPECT_EQ(summary->tabs()->tabText(tab), titles[tab]);
    EXPECT_EQ(summary->model(tab)->rowCount(), counts[tab]) << tab;
  }
  // The lines are the decoder's, in catalogue order.
  EXPECT_EQ(summary->model(1)->data(summary->model(1)->index(2)).toString().toStdString(),
            science_list_line(3, c.Science_List[3]));
  EXPECT_TRUE(QFontInfo(summary->list(0)->font()).fixedPitch());
  EXPECT_EQ(summary->count_text("packet_count"), "3");
}

TEST_F(SummaryView, ADoubleClickOnAHousekeepingLineOpensTheHousekeepingViewInFront) {
  Summary* summary = open_summary();
  testing::double_click(summary->list(0), summary->model(0)->index(1));
  EXPECT_EQ(window->session().Current_HK_Index, 2);
  ChildView* shown = window->view(ViewKind::Housekeeping);
  ASSERT_NE(shown, nullptr);
  EXPECT_EQ(window->mdi_area()->activeSubWindow(), window->frame_of(shown));
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
  EXPECT_EQ(window->mdi_area()->activeSubWindow(), window->frame_of(spectra));
  // Another spectrum goes to the same window and brings it back to the front.
  window->show_view(ViewKind::Summary);
  EXPECT_NE(window->mdi_area()->activeSubWindow(), window->frame_of(spectra));
  summary->List2_DblClick(1);
  EXPECT_EQ(window->view(ViewKind::Spectra), spectra);
  EXPECT_EQ(window->mdi_area()->activeSubWindow(), window->frame_of(spectra));
  EXPECT_EQ(window->session().Current_Science_Index, 2);
}

using Field = SummaryFindBar::Field;

// Frame f holds housekeeping packet f (complete when f is even, concise when odd) with
// sequence count f and lander time 100 + 10 f, and a progress event.
FrameWriter numbered_frames(int last) {
  FrameWriter writer(282);
  for (int f = 1; f <= last; ++f) {
    writer.add_frame({Packet{testing::kHousekeepingId, f, 51, 0, 100 + 10 * f, {{16, f % 2 == 0 ? 2 : 1}}, {}},
                      testing::labelled(LabelCode::NormalProgressEvent, f, 11, 100 + 10 * f)});
  }
  return writer;
}

class SummaryFind : public testing::AppTest {
 protected:
  void open_summary() {
    EXPECT_TRUE(load_frames(numbered_frames(40)));
    summary = show<Summary>(ViewKind::Summary);
    bar = summary->find_bar(0);
  }
  void choose_label(const QString& text) {
    bar->refresh_labels();
    bar->label_choice()->setCurrentIndex(bar->label_choice()->findText(text));
  }
  void type(Field field, const QString& text) { bar->field(field)->setText(text); }
  bool done() {
    return testing::wait_until([&] { return !bar->searching(); });
  }

  Summary* summary = nullptr;
  SummaryFindBar* bar = nullptr;
};

TEST_F(SummaryFind, EveryFieldIsAConditionThatMustHoldAndTheCountSaysHowManyMatch) {
  open_summary();
  bar->refresh_labels();
  QStringList offered;
  for (int i = 0; i < bar->label_choice()->count(); ++i) offered << bar->label_choice()->itemText(i);
  EXPECT_EQ(offered, (QStringList{"All types", "Concise", "Complete"}));
  summary->find_bar(2)->refresh_labels();
  EXPECT_EQ(summary->find_bar(2)->label_choice()->itemText(1), "Normal Progress Event");

  EXPECT_EQ(bar->count_text(), "");  // no conditions
  choose_label("Complete");
  ASSERT_TRUE(done());
  EXPECT_EQ(bar->count_text(), "20 of 40");
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
    EXPECT_EQ(bar->count_text(), count) << text;
  }
}

}  // namespace
}  // namespace morvane
