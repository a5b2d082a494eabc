// SPDX-License-Identifier: MIT
// The pressure calibration editor and the AD590 dialog as windows, and the views that follow them.
#include <cerrno>
#include <filesystem>

#include "../decoders/decoder_fixture.h"
#include "ad590_dialog.h"
#include "app_fixture.h"
#include "auxiliary_form.h"
#include "calibration_dialog.h"
#include "core/windows_path.h"
#include "drawing_view.h"
#include "housekeeping_form.h"

namespace morvane {
namespace {

class CalibrationDialogTest : public testing::AppTest {
 protected:
  std::string pressure_file() const { return config_path(base, kPressureFile); }
  CalibrationDialog* open_editor() { return show<CalibrationDialog>(ViewKind::PressureCalibration); }
  // The dialog closes itself through its frame, which goes at the next turn of the event loop.
  bool closed() {
    testing::delete_closed_windows();
    return window->view(ViewKind::PressureCalibration) == nullptr;
  }
};

// The questions' texts and the file's layout are the editor's; here, the window's part.
TEST_F(CalibrationDialogTest, AnOpenAuxiliaryViewFollowsTheAD590DialogAndModifyAcceptAndYesWriteTheEntriesTyped) {
  // An open auxiliary view follows the AD590 dialog's Accept at once.
  ASSERT_TRUE(load_packets({testing::aux_packet({{0, 1, 101, 0}, {0, 2, 23, 0x2000}})}));
  auto* auxiliary = show<Auxiliary_form>(ViewKind::Auxiliary);
  EXPECT_EQ(testing::find_text(auxiliary->picture()->drawing(), "25.00"), nullptr);
  auto* dialog = show<AD590Dialog>(ViewKind::AD590);
  dialog->temperature_entry()->setText("25");
  dialog->accept_button()->click();
  EXPECT_EQ(auxiliary->label_text("AD590 compensation temperature"), "25.00");
  // Reactor 1 reads 0 V: the junction's own temperature.
  EXPECT_NE(testing::find_text(auxiliary->picture()->drawing(), "25.00"), nullptr);
  EXPECT_NE(testing::find_text(auxiliary->picture()->drawing(), "0.50"), nullptr);  // pressure is not corrected

  // Modify, Accept and Yes write the entries typed; an open housekeeping view redraws.
  ASSERT_TRUE(load_packets({testing::hk_packet(2, {{18, 11}, {21, 7}}, {}, 41, 5000)}));
  window->session().Current_HK_Index = 1;
  auto* housekeeping = show<Housekeeping_form>(ViewKind::Housekeeping);
  CalibrationDialog* editor = open_editor();
  EXPECT_FALSE(editor->atmosphere_entry(0)->isEnabled());
  editor->button("Modify")->click();
  ASSERT_EQ(dialogs.questions.size(), 1u);
  EXPECT_FALSE(dialogs.questions[0]);  // OK / Cancel
  EXPECT_TRUE(editor->vacuum_entry(4)->isEnabled());
  editor->vacuum_entry(0)->setText("12.5");
  editor->atmosphere_entry(1)->setText(" -3.25 ");
  editor->button("Accept")->click();
  ASSERT_EQ(dialogs.questions.size(), 2u);
  EXPECT_TRUE(dialogs.questions[1]);  // Yes / No
  EXPECT_EQ(testing::read_file(pressure_file()),
            " 5\r\n22, 45,  12.5\r\n23, -3.25,  5\r\n24, 45,  5\r\n25, 45,  5\r\n26, 45,  5\r\n");
  EXPECT_EQ(window->session().config.Pressure_Table[0].C2, 12.5);
  EXPECT_TRUE(closed());
  const Session& session = window->session();  // redrawn with the new table
  EXPECT_EQ(housekeeping->picture()->drawing(),
            draw_sensor_page(session.config, decode_housekeeping(session.config, session.HK_Sensor_Data, 1)).drawing);
  EXPECT_TRUE(no_message());
}

TEST_F(CalibrationDialogTest, NothingIsWrittenUnlessModifyAndAcceptAreAnsweredYesOrWhenTheRewriteFails) {
  const std::string saved = testing::read_file(pressure_file());
  const std::tuple<const char*, bool, std::deque<bool>> cases[] = {
      // name, Modify clicked and an entry changed, the answers to Modify's question then Accept's
      {"Accept without Modify", false, {}}, {"Modify cancelled", true, {false}},
      {"Accept answered No", true, {true, false}}};
  const auto written = std::filesystem::last_write_time(pressure_file());
  for (const auto& [name, modify, answers] : cases) {
    SCOPED_TRACE(name);
    dialogs.questions.clear();
    dialogs.answers = answers;
    CalibrationDialog* editor = open_editor();
    if (modify) {
      editor->button("Modify")->click();
      EXPECT_EQ(editor->vacuum_entry(2)->isEnabled(), answers.front());
      editor->vacuum_entry(2)->setText("1");
    }
    editor->button("Accept")->click();
    EXPECT_EQ(dialogs.questions.size(), answers.size());
    EXPECT_EQ(std::filesystem::last_write_time(pressure_file()), written);
    EXPECT_TRUE(closed());
  }

  // An interrupted rewrite is a message; the dialog stays until Cancel brings the old values back.
  window->register_view(ViewKind::PressureCalibration, [](Workstation& m) {
    return new CalibrationDialog(m, [](int fd, const void* data, size_t size) -> ssize_t {
      // The disk fails before the last bytes of the new file are written.
      if (size > 8) return ::write(fd, data, 8);
      errno = EIO;
      return -1;
    });
  });
  CalibrationDialog* editor = open_editor();
  editor->button("Modify")->click();
  editor->atmosphere_entry(0)->setText("99");
  editor->button("Accept")->click();
  EXPECT_TRUE(one_message("Device I/O error"));
  EXPECT_EQ(testing::read_file(pressure_file()), saved);
  EXPECT_FALSE(closed());
  editor->button("Cancel")->click();
  EXPECT_EQ(window->session().config.Pressure_Table[0].C1, 45.0);
  EXPECT_TRUE(closed());
}

}  // namespace
}  // namespace morvane
