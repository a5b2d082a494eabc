// SPDX-License-Identifier: MIT
// The data-integrity window: the findings of a file with known faults, their counts and the time
// jump threshold.
#include "integrity_form.h"

#include <QLabel>
#include <QSpinBox>
#include <QTableView>

#include "../decoders/decoder_fixture.h"
#include "app_fixture.h"
#include "integrity_model.h"
#include "view_pass.h"

namespace morvane {
namespace {

using testing::aux_packet;
using testing::hk_packet;
using testing::Packet;

class IntegrityWindow : public testing::AppTest {
 protected:
  // Housekeeping 1, 2, then 5 (two lost) and, 1884 s later, 6; an unknown identifier in frame 4;
  // auxiliary packets 7 and 9 (one lost).
  void load_faulty_file() {
    ASSERT_TRUE(load_packets({hk_packet(2, {}, {}, 1, 100), hk_packet(2, {}, {}, 2, 108), hk_packet(2, {}, {}, 5, 116),
                              Packet{0x1234, 1, 11, 0, 120, {}, {}}, aux_packet({}, 7, 121), aux_packet({}, 9, 122),
                              hk_packet(2, {}, {}, 6, 2000)},
                             "faulty.css"));
  }
  IntegrityForm* open_window() {
    window->menu_item("mnuDisplayDataIntegrity")->trigger();
    auto* form = shown<IntegrityForm>(ViewKind::Integrity);
    EXPECT_NE(form, nullptr);
    return form;
  }
  // The row of the first finding of a kind, or -1.
  static int row_of(const IntegrityForm* form, FindingKind kind) {
    for (int row = 0; row < form->model()->rowCount(); ++row) {
      if (form->model()->finding(row).kind == kind) return row;
    }
    return -1;
  }
  static QString cell(const IntegrityForm* form, int row, int column) {
    return form->model()->data(form->model()->index(row, column)).toString();
  }
};

TEST_F(IntegrityWindow, ListsTheFindingsOfTheFileWithTheirCountsAndTheUsersTimeJumpThreshold) {
  load_faulty_file();
  IntegrityForm* form = open_window();
  EXPECT_EQ(form->windowTitle(), "Data Integrity");
  EXPECT_EQ(form->model()->rowCount(), static_cast<int>(check_integrity(window->session()).findings.size()));
  EXPECT_EQ(form->model()->headerData(0, Qt::Horizontal).toString(), "Kind");
  EXPECT_EQ(form->model()->headerData(3, Qt::Horizontal).toString(), "Text");

  const int gap = row_of(form, FindingKind::SequenceGap);
  ASSERT_GE(gap, 0);
  EXPECT_EQ(cell(form, gap, IntegrityModel::EntryColumn), "3");
  EXPECT_EQ(form->count_text(FindingKind::SequenceGap), "2");  // housekeeping and science
  EXPECT_EQ(form->count_text(FindingKind::UnknownIdentifier), "1");
  EXPECT_EQ(form->count_text(FindingKind::TimeJump), "1");
  EXPECT_EQ(form->count_text(FindingKind::PartialFrame), "0");
  EXPECT_TRUE(no_message());

  EXPECT_EQ(form->time_jump_field()->value(), 600);
  form->time_jump_field()->setValue(1884);
  EXPECT_EQ(row_of(form, FindingKind::TimeJump), -1);
  EXPECT_EQ(form->count_text(FindingKind::TimeJump), "0");
  form->time_jump_field()->setValue(1883);
  EXPECT_EQ(form->count_text(FindingKind::TimeJump), "1");
}

TEST_F(IntegrityWindow, ACancelledCheckLeavesTheFindingsAndTheirThreshold) {
  load_faulty_file();
  IntegrityForm* form = open_window();
  const int rows = form->model()->rowCount();
  cancel_view_passes_for_testing(true);
  form->time_jump_field()->setValue(1884);  // would drop the time jump
  cancel_view_passes_for_testing(false);
  EXPECT_EQ(form->time_jump_field()->value(), 600);
  EXPECT_EQ(form->model()->rowCount(), rows);
  EXPECT_EQ(form->count_text(FindingKind::TimeJump), "1");
  EXPECT_TRUE(form->isEnabled());
  EXPECT_TRUE(no_message());
}

TEST_F(IntegrityWindow, ADoubleClickOpensTheEntryInItsWindow) {
  load_faulty_file();
  IntegrityForm* form = open_window();
  const int gap = row_of(form, FindingKind::SequenceGap);
  testing::double_click(form->table(), form->model()->index(gap, IntegrityModel::TextColumn));
  EXPECT_EQ(window->session().Current_HK_Index, 3);
  EXPECT_NE(window->view(ViewKind::Housekeeping), nullptr);
  EXPECT_TRUE(no_message());
}

}  // namespace
}  // namespace morvane
