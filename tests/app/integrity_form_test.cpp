// SPDX-License-Identifier: MIT
// The data-integrity window: the findings of a file with known faults, their counts and the time
// jump threshold.
#include "integrity_form.h"

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
  // auxiliary packets 7 and 9 (one lost). The window on it, opened from its menu.
  IntegrityForm* open_on_faulty_file() {
    EXPECT_TRUE(load_packets({hk_packet(2, {}, {}, 1, 100), hk_packet(2, {}, {}, 2, 108), hk_packet(2, {}, {}, 5, 116),
                              Packet{0x1234, 1, 11, 0, 120, {}, {}}, aux_packet({}, 7, 121), aux_packet({}, 9, 122),
                              hk_packet(2, {}, {}, 6, 2000)}));
    window->menu_item("mnuDisplayDataIntegrity")->trigger();
    return shown<IntegrityForm>(ViewKind::Integrity);
  }
  // The row of the first finding of a kind, or -1.
  static int row_of(const IntegrityForm* form, FindingKind kind) {
    for (int row = 0; row < form->model()->rowCount(); ++row) {
      if (form->model()->finding(row).kind == kind) return row;
    }
    return -1;
  }
};

TEST_F(IntegrityWindow, ListsTheFindingsWithTheirCountsAndTheUsersTimeJumpThresholdUnlessCancelled) {
  IntegrityForm* form = open_on_faulty_file();
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
  EXPECT_TRUE(no_message());
}

TEST_F(IntegrityWindow, ADoubleClickOpensTheEntryInItsWindow) {
  IntegrityForm* form = open_on_faulty_file();
  ASSERT_NE(form, nullptr);
  testing::double_click(form->table(), form->model()->index(row_of(form, FindingKind::SequenceGap),
                                                            IntegrityModel::TextColumn));
  EXPECT_EQ(window->session().Current_HK_Index, 3);
  EXPECT_NE(window->view(ViewKind::Housekeeping), nullptr);
  EXPECT_TRUE(no_message());
}

}  // namespace
}  // namespace morvane
