// SPDX-License-Identifier: MIT
// The data-integrity window: the findings of a file with known faults, their counts, the time
// jump threshold, live follow, and the double click that opens a finding's entry.
#include "integrity_form.h"

#include <QLabel>
#include <QSpinBox>
#include <QTableView>

#include "../views/decoder_fixture.h"
#include "app_fixture.h"
#include "integrity_model.h"

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
  Integrity_Form* open_window() {
    window->menuItem("mnuDisplayDataIntegrity")->trigger();
    auto* form = shown<Integrity_Form>(ViewKind::Integrity);
    EXPECT_NE(form, nullptr);
    return form;
  }
  // The row of the first finding of a kind, or -1.
  static int row_of(const Integrity_Form* form, Finding_Kind kind) {
    for (int row = 0; row < form->model()->rowCount(); ++row) {
      if (form->model()->finding(row).kind == kind) return row;
    }
    return -1;
  }
  static QString cell(const Integrity_Form* form, int row, int column) {
    return form->model()->data(form->model()->index(row, column)).toString();
  }
};

TEST_F(IntegrityWindow, ListsTheFindingsOfTheFileWithTheirCountsAndTheUsersTimeJumpThreshold) {
  load_faulty_file();
  Integrity_Form* form = open_window();
  EXPECT_EQ(form->windowTitle(), "Data Integrity");
  const Integrity_Report expected = check_integrity(window->session());
  ASSERT_EQ(form->model()->rowCount(), static_cast<int>(expected.findings.size()));
  for (int row = 0; row < form->model()->rowCount(); ++row) {
    const Finding& f = expected.findings[static_cast<size_t>(row)];
    EXPECT_EQ(cell(form, row, IntegrityModel::KindColumn), finding_kind_title(f.kind));
    EXPECT_EQ(cell(form, row, IntegrityModel::ListColumn), catalogue_list_title(f.list));
    EXPECT_EQ(cell(form, row, IntegrityModel::EntryColumn), QString::number(f.index));
    EXPECT_EQ(cell(form, row, IntegrityModel::TextColumn).toStdString(), f.text);
  }
  EXPECT_EQ(form->model()->headerData(0, Qt::Horizontal).toString(), "Kind");
  EXPECT_EQ(form->model()->headerData(3, Qt::Horizontal).toString(), "Text");

  const int gap = row_of(form, Finding_Kind::SequenceGap);
  ASSERT_GE(gap, 0);
  EXPECT_EQ(cell(form, gap, IntegrityModel::ListColumn), "Housekeeping");
  EXPECT_EQ(cell(form, gap, IntegrityModel::EntryColumn), "3");
  EXPECT_EQ(cell(form, gap, IntegrityModel::TextColumn),
            "The housekeeping sequence count 5 follows 2: 2 packets missing");
  ASSERT_GE(row_of(form, Finding_Kind::UnknownIdentifier), 0);
  EXPECT_EQ(form->countText(Finding_Kind::SequenceGap), "2");  // housekeeping and science
  EXPECT_EQ(form->countText(Finding_Kind::UnknownIdentifier), "1");
  EXPECT_EQ(form->countText(Finding_Kind::TimeJump), "1");
  EXPECT_EQ(form->countText(Finding_Kind::PartialFrame), "0");
  EXPECT_TRUE(no_message());

  EXPECT_EQ(form->timeJumpField()->value(), 600);
  form->timeJumpField()->setValue(1884);
  EXPECT_EQ(row_of(form, Finding_Kind::TimeJump), -1);
  EXPECT_EQ(form->countText(Finding_Kind::TimeJump), "0");
  form->timeJumpField()->setValue(1883);
  EXPECT_EQ(form->countText(Finding_Kind::TimeJump), "1");
}

TEST_F(IntegrityWindow, ADoubleClickOpensTheEntryInItsWindow) {
  load_faulty_file();
  Integrity_Form* form = open_window();
  const int gap = row_of(form, Finding_Kind::SequenceGap);
  testing::double_click(form->table(), form->model()->index(gap, IntegrityModel::TextColumn));
  EXPECT_EQ(window->session().Current_HK_Index, 3);
  EXPECT_NE(window->view(ViewKind::Housekeeping), nullptr);

  const int unknown = row_of(form, Finding_Kind::UnknownIdentifier);
  const int32_t entry = form->model()->finding(unknown).index;
  EXPECT_EQ(window->session().catalogue.Information_List[entry].Label, LabelCode::Unknown);
  form->openFinding(unknown);
  EXPECT_EQ(window->session().Current_Information_Index, entry);
  EXPECT_NE(window->view(ViewKind::Information), nullptr);

  int science = -1;
  for (int row = 0; row < form->model()->rowCount(); ++row) {
    if (form->model()->finding(row).list == Catalogue_List::Science) science = row;
  }
  ASSERT_GE(science, 0);
  form->openFinding(science);
  EXPECT_EQ(window->session().Current_Science_Index, 2);
  EXPECT_NE(window->view(ViewKind::Auxiliary), nullptr);
  EXPECT_TRUE(no_message());
}

TEST_F(IntegrityWindow, IsCheckedAgainAfterALoadAndDuringLiveFollow) {
  Integrity_Form* form = open_window();
  EXPECT_EQ(form->model()->rowCount(), 0);
  EXPECT_EQ(form->findChild<QLabel*>("SummaryLabel")->text(), "Please load an EGSE data file");

  auto frames = [](const std::vector<int>& sequences) {
    testing::FrameWriter writer(282);
    for (const int sequence : sequences) writer.add_frame({hk_packet(1, {}, {}, sequence, 100 + 8 * sequence)});
    return writer;
  };
  write_log(frames({1, 2}));
  window->startCollection();
  EXPECT_EQ(window->view(ViewKind::Integrity), form);
  EXPECT_EQ(form->model()->rowCount(), 0);
  EXPECT_EQ(form->countText(Finding_Kind::SequenceGap), "0");

  grow_log(frames({1, 2, 4}));
  ASSERT_EQ(form->model()->rowCount(), 1);
  EXPECT_EQ(form->model()->finding(0).kind, Finding_Kind::SequenceGap);
  EXPECT_EQ(form->model()->finding(0).index, 3);
  EXPECT_EQ(form->countText(Finding_Kind::SequenceGap), "1");
  EXPECT_EQ(form->findChild<QLabel*>("SummaryLabel")->text(), "1 finding");
  EXPECT_TRUE(no_message());
}

}  // namespace
}  // namespace morvane
