// SPDX-License-Identifier: MIT
// The windows over the whole catalogue: the summary and its find bar, and the data-integrity window.
#include "summary_view.h"

#include "../decoders/decoder_fixture.h"
#include "app_fixture.h"
#include "decoders/summary_lines.h"
#include "integrity_form.h"
#include "integrity_model.h"
#include "summary_find_bar.h"
#include "view_pass.h"

namespace morvane {
namespace {

using testing::aux_packet, testing::FrameWriter, testing::hk_packet, testing::Packet;

using CatalogueWindows = testing::AppTest;
using Field = SummaryFindBar::Field;

// The row of the first finding of a kind, or -1.
int row_of(const IntegrityForm* form, FindingKind kind) {
  for (int row = 0; row < form->model()->rowCount(); ++row)
    if (form->model()->finding(row).kind == kind) return row;
  return -1;
}

TEST_F(CatalogueWindows, TheSummaryListsTheCatalogueInFixedPitchTabsAndFindsEntriesAndTheIntegrityWindowItsFaults) {
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

  // Each find-bar field is a condition that must hold, on 40 frames: housekeeping f (complete if f is
  // even) of sequence count f and lander time 100 + 10 f, and a progress event.
  FrameWriter writer(282);
  for (int f = 1; f <= 40; ++f) {
    writer.add_frame({Packet{testing::kHousekeepingId, f, 51, 0, 100 + 10 * f, {{16, f % 2 == 0 ? 2 : 1}}, {}},
                      testing::labelled(LabelCode::NormalProgressEvent, f, 11, 100 + 10 * f)});
  }
  ASSERT_TRUE(load_frames(writer));
  summary = show<Summary>(ViewKind::Summary);
  SummaryFindBar* bar = summary->find_bar(0);
  const auto done = [&] { return testing::wait_until([&] { return !bar->searching(); }); };
  bar->refresh_labels();
  EXPECT_EQ(bar->label_choice()->count(), 3);  // all types and the two in the file
  EXPECT_EQ(bar->count_text(), "");  // no conditions
  bar->label_choice()->setCurrentIndex(bar->label_choice()->findText("Complete"));
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
    bar->field(field)->setText(text);
    ASSERT_TRUE(done());
    EXPECT_EQ(bar->count_text(), count) << text;
  }

  // The data-integrity window on housekeeping 1, 2, then 5 (two lost) and, 1884 s later, 6; an unknown
  // identifier in frame 4; auxiliary packets 7 and 9 (one lost).
  ASSERT_TRUE(load_packets({hk_packet(2, {}, {}, 1, 100), hk_packet(2, {}, {}, 2, 108), hk_packet(2, {}, {}, 5, 116),
                            Packet{0x1234, 1, 11, 0, 120, {}, {}}, aux_packet({}, 7, 121), aux_packet({}, 9, 122),
                            hk_packet(2, {}, {}, 6, 2000)}));
  window->menu_item("mnuDisplayDataIntegrity")->trigger();
  IntegrityForm* form = shown<IntegrityForm>(ViewKind::Integrity);
  ASSERT_NE(form, nullptr);
  EXPECT_EQ(form->model()->rowCount(), static_cast<int>(check_integrity(window->session()).findings.size()));
  EXPECT_EQ(form->count_text(FindingKind::SequenceGap), "2");  // housekeeping and science
  EXPECT_EQ(form->count_text(FindingKind::UnknownIdentifier), "1");
  EXPECT_EQ(form->count_text(FindingKind::TimeJump), "1");
  EXPECT_EQ(form->time_jump_field()->value(), 600);

  // A check cancelled keeps the findings and their threshold.
  const int rows = form->model()->rowCount();
  cancel_view_passes_for_testing(true);
  form->time_jump_field()->setValue(1884);
  cancel_view_passes_for_testing(false);
  EXPECT_EQ(form->time_jump_field()->value(), 600);
  EXPECT_EQ(form->model()->rowCount(), rows);
  EXPECT_TRUE(form->isEnabled());

  form->time_jump_field()->setValue(1884);
  EXPECT_EQ(row_of(form, FindingKind::TimeJump), -1);
  EXPECT_EQ(form->count_text(FindingKind::TimeJump), "0");
  form->time_jump_field()->setValue(1883);
  EXPECT_EQ(form->count_text(FindingKind::TimeJump), "1");

  // A double click opens the entry in its window.
  testing::double_click(form->table(), form->model()->index(row_of(form, FindingKind::SequenceGap),
                                                            IntegrityModel::TextColumn));
  EXPECT_EQ(window->session().Current_HK_Index, 3);
  EXPECT_NE(window->view(ViewKind::Housekeeping), nullptr);
  EXPECT_TRUE(no_message());
}

}  // namespace
}  // namespace morvane
