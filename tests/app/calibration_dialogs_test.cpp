// SPDX-License-Identifier: MIT
// The pressure calibration editor and the AD590 temperature dialog: their texts, the questions
// they ask, what they write, and the views that follow them.
#include <cerrno>
#include <filesystem>

#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QPushButton>

#include "../views/decoder_fixture.h"
#include "ad590_dialog.h"
#include "app_fixture.h"
#include "auxiliary_form.h"
#include "calibration_dialog.h"
#include "core/windows_path.h"
#include "drawing_view.h"
#include "housekeeping_form.h"
#include "twips.h"

namespace morvane {
namespace {

class CalibrationDialogTest : public testing::AppTest {
 protected:
  void SetUp() override {
    AppTest::SetUp();
    pressure_file = config_path(base, kPressureFile);
    defaults_file = config_path(base, kDefaultPressureFile);
    saved = testing::read_file(pressure_file);
  }
  Calibration_Dialog* open_editor() { return show<Calibration_Dialog>(ViewKind::PressureCalibration); }
  // The dialog closes itself through its frame, which goes at the next turn of the event loop.
  bool closed(ViewKind kind) {
    testing::delete_closed_windows();
    return window->view(kind) == nullptr;
  }
  std::vector<std::pair<double, double>> table() const {
    std::vector<std::pair<double, double>> values;
    for (const Pressure_Record& r : window->session().config.Pressure_Table) values.emplace_back(r.C1, r.C2);
    return values;
  }

  std::string pressure_file;
  std::string defaults_file;
  std::string saved;
};

const std::vector<std::pair<double, double>> kSavedTable(5, {45.0, 5.0});

TEST_F(CalibrationDialogTest, ShowsOneDisabledRowPerPressureSensorInThePaddedFormat) {
  Calibration_Dialog* editor = open_editor();
  ASSERT_NE(editor, nullptr);
  EXPECT_EQ(editor->windowTitle(), "Calibration");
  EXPECT_EQ(editor->findChild<QGroupBox*>()->title(), "Pressure Sensors");
  QStringList texts;
  for (const QLabel* label : editor->findChildren<QLabel*>()) texts << label->text();
  for (const char* text :
       {"Sensor", "Atmosphere reading (mV)", "Vacuum reading (mV)", "Click to modify pressure sensor calibration",
        "Click to reset pressure sensor calibration to maufactureers default values"}) {
    EXPECT_TRUE(texts.contains(text)) << text;
  }
  for (const char* caption : {"Accept", "Cancel", "Modify", "Reset"}) {
    EXPECT_NE(editor->button(caption), nullptr) << caption;
  }

  ASSERT_EQ(editor->rowCount(), 5);
  EXPECT_EQ(editor->sensorName(0), "Pressure 1");
  EXPECT_EQ(editor->sensorName(4), "Pressure 5");
  const int pitch = twips_to_pixels(400, editor->logicalDpiY());
  for (int i = 0; i < editor->rowCount(); ++i) {
    EXPECT_EQ(editor->atmosphereEntry(i)->text(), "    45.0000") << i;  // 6 - 2 x 1 blanks
    EXPECT_EQ(editor->vacuumEntry(i)->text(), "      5.0000") << i;
    EXPECT_FALSE(editor->atmosphereEntry(i)->isEnabled()) << i;
    EXPECT_FALSE(editor->vacuumEntry(i)->isEnabled()) << i;
    if (i > 0) {
      EXPECT_NEAR(editor->atmosphereEntry(i)->y() - editor->atmosphereEntry(i - 1)->y(), pitch, 1) << i;
    }
  }
}

TEST_F(CalibrationDialogTest, ModifyAcceptAndYesWriteTheEntriesKeepingANonNumericOnesValue) {
  Calibration_Dialog* editor = open_editor();
  editor->button("Modify")->click();
  ASSERT_EQ(dialogs.questions.size(), 1u);
  EXPECT_EQ(dialogs.questions[0].text,
            "Warning - modifying the pressure sensor calibration will alter the display of the pressure sensor values");
  EXPECT_FALSE(dialogs.questions[0].yes_no);
  EXPECT_TRUE(editor->atmosphereEntry(0)->isEnabled());
  EXPECT_TRUE(editor->vacuumEntry(4)->isEnabled());

  editor->atmosphereEntry(0)->setText("abc");
  editor->vacuumEntry(0)->setText("12.5");
  editor->atmosphereEntry(1)->setText(" -3.25 ");
  editor->button("Accept")->click();
  ASSERT_EQ(dialogs.questions.size(), 2u);
  EXPECT_EQ(dialogs.questions[1].text, "Are you sure that you want to change the pressure sensor calibration values");
  EXPECT_TRUE(dialogs.questions[1].yes_no);
  EXPECT_EQ(testing::read_file(pressure_file),
            " 5\r\n22, 45,  12.5\r\n23, -3.25,  5\r\n24, 45,  5\r\n25, 45,  5\r\n26, 45,  5\r\n");
  EXPECT_EQ(window->session().config.Pressure_Table[0].C1, 45.0);
  EXPECT_EQ(window->session().config.Pressure_Table[0].C2, 12.5);
  EXPECT_TRUE(closed(ViewKind::PressureCalibration));
  EXPECT_TRUE(no_message());
}

TEST_F(CalibrationDialogTest, NothingIsWrittenUnlessModifyAndAcceptAreBothAnsweredYes) {
  struct Case {
    const char* name;
    bool modify;               // Modify is clicked and an entry changed
    std::deque<bool> answers;  // to Modify's question, then to Accept's
    size_t questions;          // asked in all
  };
  const Case cases[] = {
      {"Accept without Modify", false, {}, 0},
      {"Modify cancelled", true, {false}, 1},
      {"Accept answered No", true, {true, false}, 2},
  };
  const auto written = std::filesystem::last_write_time(pressure_file);
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    dialogs.questions.clear();
    dialogs.answers = c.answers;
    Calibration_Dialog* editor = open_editor();
    if (c.modify) {
      editor->button("Modify")->click();
      EXPECT_EQ(editor->vacuumEntry(2)->isEnabled(), c.answers.front());
      editor->vacuumEntry(2)->setText("1");
    }
    editor->button("Accept")->click();
    EXPECT_EQ(dialogs.questions.size(), c.questions);
    EXPECT_EQ(testing::read_file(pressure_file), saved);
    EXPECT_EQ(std::filesystem::last_write_time(pressure_file), written);
    EXPECT_TRUE(closed(ViewKind::PressureCalibration));
  }
}

TEST_F(CalibrationDialogTest, ResetShowsTheDefaultsAndCancelOrClosingTheWindowRestoresTheSavedValues) {
  testing::write_file(defaults_file, "5\r\n22, 0.5, -123.4\r\n23, 123.4, 2\r\n24, 3, 4\r\n25, 5, 6\r\n26, 7, 8\r\n");
  Calibration_Dialog* editor = open_editor();
  editor->button("Reset")->click();
  ASSERT_EQ(dialogs.questions.size(), 1u);
  EXPECT_FALSE(dialogs.questions[0].yes_no);
  EXPECT_EQ(editor->atmosphereEntry(0)->text(), "      0.5000");
  EXPECT_EQ(editor->vacuumEntry(0)->text(), " -123.4000");
  EXPECT_EQ(editor->atmosphereEntry(1)->text(), "  123.4000");
  EXPECT_EQ(window->session().config.Pressure_Table[0].C1, 0.5);  // in memory only
  EXPECT_EQ(testing::read_file(pressure_file), saved);

  editor->button("Cancel")->click();
  EXPECT_EQ(dialogs.questions.size(), 1u);  // Cancel asks nothing
  EXPECT_EQ(table(), kSavedTable);
  EXPECT_EQ(testing::read_file(pressure_file), saved);
  EXPECT_TRUE(closed(ViewKind::PressureCalibration));

  editor = open_editor();
  editor->button("Reset")->click();
  ASSERT_EQ(window->session().config.Pressure_Table[4].C2, 8.0);
  window->frameOf(editor)->close();
  EXPECT_TRUE(closed(ViewKind::PressureCalibration));
  EXPECT_EQ(table(), kSavedTable);
}

TEST_F(CalibrationDialogTest, AnInterruptedRewriteLeavesTheOldFileWholeAndTheDialogOpen) {
  window->registerView(ViewKind::PressureCalibration, [](EGSE_MDI& m) {
    return new Calibration_Dialog(m, [](int fd, const void* data, size_t size) -> ssize_t {
      // The disk fails before the last bytes of the new file are written.
      if (size > 8) return ::write(fd, data, 8);
      errno = EIO;
      return -1;
    });
  });
  Calibration_Dialog* editor = open_editor();
  editor->button("Modify")->click();
  editor->atmosphereEntry(0)->setText("99");
  editor->button("Accept")->click();
  EXPECT_TRUE(one_message("Device I/O error"));
  EXPECT_EQ(testing::read_file(pressure_file), saved);
  const auto folder = std::filesystem::path(pressure_file).parent_path();
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    EXPECT_NE(entry.path().filename().string().front(), '.') << entry.path();  // no new file left beside it
  }
  EXPECT_FALSE(closed(ViewKind::PressureCalibration));

  editor->button("Cancel")->click();  // the saved values come back
  EXPECT_EQ(table(), kSavedTable);
  EXPECT_TRUE(closed(ViewKind::PressureCalibration));
}

TEST_F(CalibrationDialogTest, TheHousekeepingViewRedrawsWhenTheEditorCloses) {
  ASSERT_TRUE(load_packets({testing::hk_packet(2, testing::sensor_bytes({{22, 40}}))}));
  auto* housekeeping = show<Housekeeping_form>(ViewKind::Housekeeping);
  const Drawing before = housekeeping->picture()->drawing();
  Calibration_Dialog* editor = open_editor();
  editor->button("Modify")->click();
  editor->atmosphereEntry(0)->setText("90");
  editor->button("Accept")->click();
  EXPECT_NE(housekeeping->picture()->drawing(), before);
  EXPECT_EQ(housekeeping->picture()->drawing(), draw_sensor_page(window->session().config).drawing);
}

using AD590DialogTest = testing::AppTest;

TEST_F(AD590DialogTest, ShowsItsTextsAndTheTemperatureOfTheSetting) {
  auto* dialog = show<AD590_Dialog>(ViewKind::AD590);
  ASSERT_NE(dialog, nullptr);
  EXPECT_EQ(dialog->windowTitle(), "AD590 Calibration");
  EXPECT_EQ(dialog->temperatureEntry()->text(), "0.00");
  EXPECT_EQ(dialog->findChild<QLabel*>("Label1")->text(), "AD590 Temperature");
  EXPECT_EQ(dialog->findChild<QLabel*>("Label2")->text(), "Temperature of AD590 to use on the Auxiliary data display");
  EXPECT_EQ(dialog->acceptButton()->text(), "Accept");
  EXPECT_EQ(dialog->cancelButton()->text(), "Cancel");
  const QPoint place = twips_to_pixels(2400, 1200, *window);
  EXPECT_EQ(window->frameOf(dialog)->pos(), place);
}

TEST_F(AD590DialogTest, TwentyFiveAcceptedIsShownAgainAsTwentyFive) {
  auto open = [&] { return show<AD590_Dialog>(ViewKind::AD590); };
  AD590_Dialog* dialog = open();
  dialog->temperatureEntry()->setText("25");
  dialog->acceptButton()->click();
  testing::delete_closed_windows();
  ASSERT_EQ(window->view(ViewKind::AD590), nullptr);
  const double emf = window->session().config.AD590_EMF;
  EXPECT_GT(emf, 0);
  EXPECT_EQ(open()->temperatureEntry()->text(), "25.00");

  struct Case {
    const char* entry;
    bool accept;
  };
  for (const Case c : {Case{"abc", true}, Case{"30", false}}) {  // ignored, cancelled
    dialog = open();
    dialog->temperatureEntry()->setText(c.entry);
    (c.accept ? dialog->acceptButton() : dialog->cancelButton())->click();
    testing::delete_closed_windows();
    EXPECT_EQ(window->view(ViewKind::AD590), nullptr) << c.entry;
    EXPECT_EQ(window->session().config.AD590_EMF, emf) << c.entry;
  }
  EXPECT_TRUE(dialogs.messages.empty());
}

TEST_F(AD590DialogTest, AnOpenAuxiliaryViewFollowsTheAcceptAtOnce) {
  ASSERT_TRUE(load_packets({testing::aux_packet({{0, 1, 101, 0}, {0, 2, 23, 0x2000}})}));
  auto* auxiliary = show<Auxiliary_form>(ViewKind::Auxiliary);
  EXPECT_EQ(testing::find_text(auxiliary->picture()->drawing(), "25.00"), nullptr);
  auto* dialog = show<AD590_Dialog>(ViewKind::AD590);
  dialog->temperatureEntry()->setText("25");
  dialog->acceptButton()->click();
  EXPECT_EQ(auxiliary->labelText("AD590 compensation temperature"), "25.00");
  const Placed_Text* reactor = testing::find_text(auxiliary->picture()->drawing(), "25.00");
  ASSERT_NE(reactor, nullptr);  // reactor 1 reads 0 V: the junction's own temperature
  EXPECT_EQ(reactor->y, 420);
  EXPECT_NE(testing::find_text(auxiliary->picture()->drawing(), "0.50"), nullptr);  // pressure is not corrected
}

}  // namespace
}  // namespace morvane
