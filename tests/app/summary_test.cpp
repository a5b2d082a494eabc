// SPDX-License-Identifier: MIT
// The summary: its three lists and counts, the double clicks that open an entry's window, and
// the find bar's conditions.
#include "summary_view.h"

#include <QComboBox>
#include <QLineEdit>
#include <QListView>
#include <QMdiArea>

#include "app_fixture.h"
#include "summary_find_bar.h"
#include "decoders/summary_lines.h"

namespace morvane {
namespace {

using testing::FrameWriter;
using testing::Packet;

using SummaryView = testing::AppTest;

TEST_F(SummaryView, ListsTheCatalogueInThreeTabsWithTheDecodersLinesInAFixedPitchFont) {
  Summary* summary = show<Summary>(ViewKind::Summary);
  EXPECT_EQ(summary->model(0)->rowCount(), 0);
  ASSERT_TRUE(load_frames(testing::three_frames()));
  summary = shown<Summary>(ViewKind::Summary);
  const Catalogue& c = window->session().catalogue;
  const int32_t counts[] = {c.HK_Count(), c.Science_Count(), c.Information_Count()};
  for (int tab = 0; tab < 3; ++tab) EXPECT_EQ(summary->model(tab)->rowCount(), counts[tab]) << tab;
  EXPECT_EQ(summary->model(1)->index(2).data().toString().toStdString(), science_list_line(3, c.Science_List[3]));
  EXPECT_TRUE(QFontInfo(summary->list(0)->font()).fixedPitch());
  EXPECT_EQ(summary->count_text("packet_count"), "3");
}

TEST_F(SummaryView, ADoubleClickOnAScienceLineOpensTheViewOfItsKindInFront) {
  ASSERT_TRUE(load_frames(testing::three_frames()));
  Summary* summary = show<Summary>(ViewKind::Summary);
  // Science entries: auxiliary, isotope, GC spectrum, unknown. (Housekeeping lines: Desktop's Enter.)
  testing::double_click(summary->list(1), summary->model(1)->index(3));
  EXPECT_EQ(window->session().Current_Science_Index, 4);
  EXPECT_EQ(window->view(ViewKind::Auxiliary), nullptr);
  EXPECT_EQ(window->view(ViewKind::Spectra), nullptr);
  summary->List2_DblClick(0);
  EXPECT_NE(window->view(ViewKind::Auxiliary), nullptr);
  EXPECT_EQ(window->view(ViewKind::Spectra), nullptr);
  summary->List2_DblClick(2);  // the GC spectrum
  ChildView* spectra = window->view(ViewKind::Spectra);
  ASSERT_NE(spectra, nullptr);
  // Another spectrum goes to the same window and brings it back to the front.
  window->show_view(ViewKind::Summary);
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
  EXPECT_EQ(bar->label_choice()->count(), 3);  // all types and the two in the file
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
