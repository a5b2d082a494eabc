// SPDX-License-Identifier: MIT
// The export dialogs as windows, writing what the command line writes (their checks: export tests').
#include <filesystem>
#include <iterator>

#include "../export/export_fixture.h"
#include "app_fixture.h"
#include "export/ds_calibration_export.h"
#include "export_form.h"
#include "twips.h"
#include "decoders/auxiliary_presenter.h"

namespace morvane {
namespace {

using testing::FrameWriter;

// The simulated instrument's file of about 600 frames, loaded as a QM file.
class ExportFormTest : public testing::AppTest {
 protected:
  void SetUp() override {
    AppTest::SetUp();
    telemetry = load_simulated(FileFormat::QM, "demo.qm").toStdString();
  }

  ExportForm* open(const char* menu_item, ViewKind kind) {
    window->menu_item(menu_item)->trigger();
    return qobject_cast<ExportForm*>(window->view(kind));
  }
  void export_to(ExportForm* form, const std::string& out) {
    dialogs.files.push_back(QString::fromStdString(dir.path(out)));
    form->export_button()->click();
  }
  // What morvane-cli export writes to out for the same file and choices.
  std::string cli_export(const std::string& kind, std::vector<std::string> choices, const std::string& out) {
    std::vector<std::string> arguments{"export", kind, telemetry, "-t", "QM", "--base", base, "-o", dir.path(out)};
    arguments.insert(arguments.end(), choices.begin(), choices.end());
    const testing::ProgramRun run = testing::run_program("src/cli/morvane-cli", arguments);
    EXPECT_EQ(run.status, 0) << run.err;
    return testing::read_file(dir.path(out));
  }
  long files_in_folder() const { return std::distance(std::filesystem::directory_iterator(dir.root()), {}); }

  std::string telemetry;
};

using ExportMenu = testing::AppTest;

// Each menu item opening its own dialog is what the other tests' open() rests on.
TEST_F(ExportMenu, AsksForAFileThenForSpectraAndPlacesTheDialog) {
  window->menu_item("mnuExportHousekeeping")->trigger();
  EXPECT_EQ(window->view(ViewKind::ExportHousekeeping), nullptr);
  EXPECT_TRUE(one_message("Please load an EGSE data file"));

  // A file of housekeeping packets only: every dialog but the spectra one opens, at its place.
  FrameWriter writer(282);
  writer.add_frame({testing::labelled(LabelCode::Complete, 3, 51, 1000)});
  ASSERT_TRUE(load_through_menu("mnuLoadFile_QM", write_frames("hk.qm", writer)));
  dialogs.messages.clear();
  window->menu_item("mnuExportScienceSpectra")->trigger();
  EXPECT_EQ(window->view(ViewKind::ExportSpectra), nullptr);
  EXPECT_EQ(dialogs.messages, std::vector<QString>{"The EGSE data file contains no spectra"});
  window->menu_item("mnuExportDockingStationCalibration")->trigger();
  ASSERT_NE(window->view(ViewKind::ExportDockingStationCalibration), nullptr);
  EXPECT_EQ(window->frame_of(window->view(ViewKind::ExportDockingStationCalibration))->pos(),
            twips_to_pixels(4000, 1000, *window));
}

TEST_F(ExportFormTest, ABadAD590EntryOrRangeIsItsMessageAndIsResetWithoutAFileDialog) {
  // The auxiliary export's AD590 entry counts only for its format.
  ExportForm* auxiliary = open("mnuExportScienceAuxilliary", ViewKind::ExportAuxiliary);
  EXPECT_FALSE(auxiliary->ad590Field()->isEnabled());
  auxiliary->format_option(3)->click();
  EXPECT_TRUE(auxiliary->ad590Field()->isEnabled());
  auxiliary->ad590Field()->setText("warm");
  auxiliary->export_button()->click();
  EXPECT_EQ(dialogs.messages, std::vector<QString>{"AD590 temperature not valid"});
  EXPECT_EQ(auxiliary->ad590Field()->text().toStdString(), ad590_temperature_text(window->session().config));

  ExportForm* form = open("mnuExportDockingStationCalibration", ViewKind::ExportDockingStationCalibration);
  form->all_box()->click();
  form->from_field()->setText("2");
  const int32_t calibrations = DSCalibrationIndex(window->session()).count();
  form->to_field()->setText(QString::number(calibrations + 1));
  QString from_at_message;
  dialogs.on_message = [&] { from_at_message = form->from_field()->text(); };
  form->export_button()->click();
  EXPECT_EQ(dialogs.events, (std::vector<std::string>{"message", "message"}));  // no file dialog
  EXPECT_EQ(from_at_message, "2");  // the boxes are reset after the message
  EXPECT_EQ(form->from_field()->text(), "1");
  EXPECT_EQ(form->to_field()->text(), QString::number(calibrations));
  EXPECT_TRUE(form->from_field()->isEnabled());  // All stays cleared
}

// The choices in the dialog reach the writer: the files are the command line's for the same ones.
TEST_F(ExportFormTest, EachDialogWritesWhatTheCommandLineWritesForTheSameChoicesAndShowsARunTimeError) {
  ExportForm* hk = open("mnuExportHousekeeping", ViewKind::ExportHousekeeping);
  hk->all_box()->click();
  hk->from_field()->setText("2");
  hk->to_field()->setText("5");
  hk->delimiter_option(2)->click();
  hk->format_option(2)->click();
  for (size_t i = 0; i < hk->sensor_boxes().size(); ++i) hk->sensor_boxes()[i]->setChecked(i == 0 || i == 27 || i == 28);
  export_to(hk, "hk.csv");
  EXPECT_EQ(testing::read_file(dir.path("hk.csv")),
            cli_export("hk", {"--from", "2", "--to", "5", "--delimiter", "semicolon", "--format", "calibrated-ad590",
                              "--sensors", "1,28,29"}, "hk_cli.csv"));

  ExportForm* spectra = open("mnuExportScienceSpectra", ViewKind::ExportSpectra);
  spectra->all_box()->click();
  spectra->from_field()->setText("2");
  spectra->to_field()->setText("3");
  spectra->format_option(1)->click();
  export_to(spectra, "spectra.txt");
  EXPECT_EQ(testing::read_file(dir.path("spectra.txt")),
            cli_export("spectra", {"--from", "2", "--to", "3", "--delimiter", "tab", "--format", "excel"}, "s.txt"));

  // A run-time error (a spectrum whose bins run past 1024) is shown and a new dialog stays.
  window->close_view(ViewKind::ExportSpectra);
  FrameWriter writer(282);
  writer.add_frame({testing::isotope_packet({2, 1020, {16, 16, 16, 16, 16, 16, 16, 16}})});
  ASSERT_TRUE(window->load_file(FileFormat::QM, write_frames("bad.qm", writer)));
  ExportForm* form = open("mnuExportScienceSpectra", ViewKind::ExportSpectra);
  ASSERT_NE(form, nullptr);
  export_to(form, "spectra.txt");
  EXPECT_TRUE(one_message("Subscript out of range"));
  EXPECT_EQ(window->view(ViewKind::ExportSpectra), form);
}

TEST_F(ExportFormTest, ACancelledFileChoiceWritesNothingACancelledExportKeepsTheFileAndCancelCloses) {
  const auto before = files_in_folder();
  ExportForm* hk = open("mnuExportHousekeeping", ViewKind::ExportHousekeeping);
  dialogs.files.push_back(QString());
  hk->export_button()->click();
  EXPECT_EQ(window->view(ViewKind::ExportHousekeeping), hk);
  EXPECT_EQ(files_in_folder(), before);

  // A cancel at the progress dialog keeps the file and the lines beside it.
  export_to(hk, "hk.txt");
  const std::string exported = testing::read_file(dir.path("hk.txt"));
  ASSERT_FALSE(exported.empty());

  QTimer cancel;  // at the first progress report
  QObject::connect(&cancel, &QTimer::timeout, [&] {
    if (auto* progress = hk->findChild<QProgressDialog*>("ExportProgress")) progress->cancel();
  });
  cancel.start(0);
  export_to(hk, "hk.txt");
  cancel.stop();
  EXPECT_EQ(testing::read_file(dir.path("hk.txt")), exported);
  EXPECT_TRUE(one_message("Export cancelled: ", QString::fromStdString(dir.path("hk.partial.txt"))));
  const std::string kept = testing::read_file(dir.path("hk.partial.txt"));
  EXPECT_EQ(exported.substr(0, kept.size()), kept);
  EXPECT_EQ(std::count(dialogs.events.begin(), dialogs.events.end(), "file"), 3);

  hk->cancel_button()->click();
  testing::delete_closed_windows();
  EXPECT_EQ(window->view(ViewKind::ExportHousekeeping), nullptr);
}

}  // namespace
}  // namespace morvane
