// SPDX-License-Identifier: MIT
// The four export dialogs: the menu's guards, the range checks, the file choice, and files that are
// byte for byte what the command line writes.
#include <algorithm>
#include <filesystem>

#include <QCheckBox>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QRadioButton>
#include <QProgressDialog>
#include <QTimer>

#include "../export/export_fixture.h"
#include "app_fixture.h"
#include "core/error.h"
#include "export/ds_calibration_export.h"
#include "export_form.h"
#include "twips.h"
#include "views/auxiliary_view.h"

namespace morvane {
namespace {

using testing::FrameWriter;
using testing::Packet;

constexpr const char* kCli = "src/cli/morvane-cli";

const char* menu_item_of(ViewKind kind) {
  switch (kind) {
    case ViewKind::ExportAuxiliary: return "mnuExportScienceAuxilliary";
    case ViewKind::ExportSpectra: return "mnuExportScienceSpectra";
    case ViewKind::ExportDockingStationCalibration: return "mnuExportDockingStationCalibration";
    default: return "mnuExportHousekeeping";
  }
}

constexpr ViewKind kExportKinds[] = {ViewKind::ExportHousekeeping, ViewKind::ExportAuxiliary,
                                     ViewKind::ExportDockingStationCalibration, ViewKind::ExportSpectra};

// The simulated instrument's file of about 600 frames, loaded as a QM file.
class ExportFormTest : public testing::AppTest {
 protected:
  void SetUp() override {
    AppTest::SetUp();
    telemetry = load_simulated(FileFormat::QM, "demo.qm").toStdString();
  }

  Export_Form* open(ViewKind kind) {
    window->menuItem(menu_item_of(kind))->trigger();
    return qobject_cast<Export_Form*>(window->view(kind));
  }
  // Export answered with the file out (in the test folder).
  void exportTo(Export_Form* form, const std::string& out) {
    dialogs.files.push_back(QString::fromStdString(dir.path(out)));
    form->exportButton()->click();
  }
  // What morvane-cli export writes to out for the same file and choices.
  std::string cliExport(const std::string& kind, std::vector<std::string> choices, const std::string& out) {
    std::vector<std::string> arguments{"export", kind, telemetry, "-t", "QM", "--base", base, "-o", dir.path(out)};
    arguments.insert(arguments.end(), choices.begin(), choices.end());
    const testing::ProgramRun run = testing::run_program(kCli, arguments);
    EXPECT_EQ(run.status, 0) << run.err;
    return testing::read_file(dir.path(out));
  }
  std::vector<std::string> filesInFolder() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(dir.root())) {
      names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
  }
  // The number of docking station calibrations in the file.
  int32_t calibrationCount() const { return DS_Calibration_Index(window->session()).count(); }

  std::string telemetry;
};

using ExportMenu = testing::AppTest;

TEST_F(ExportMenu, AsksForAFileThenForSpectraAndPlacesTheDialog) {
  for (const ViewKind kind : kExportKinds) {
    window->menuItem(menu_item_of(kind))->trigger();
    EXPECT_EQ(window->view(kind), nullptr);
  }
  EXPECT_EQ(dialogs.messages, std::vector<QString>(4, "Please load an EGSE data file"));

  // A file of housekeeping packets only: every dialog but the spectra one opens, at its place.
  FrameWriter writer(282);
  writer.add_frame({testing::labelled(LabelCode::Complete, 3, 51, 1000)});
  ASSERT_TRUE(load_through_menu("mnuLoadFile_QM", write_frames("hk.qm", writer)));
  dialogs.messages.clear();
  for (const ViewKind kind : kExportKinds) {
    window->menuItem(menu_item_of(kind))->trigger();
    if (kind == ViewKind::ExportSpectra) {
      EXPECT_EQ(window->view(kind), nullptr);
    } else {
      ASSERT_NE(window->view(kind), nullptr) << view_name(kind);
      EXPECT_EQ(window->frameOf(window->view(kind))->pos(), twips_to_pixels(4000, 1000, *window)) << view_name(kind);
    }
  }
  EXPECT_EQ(dialogs.messages, std::vector<QString>{"The EGSE data file contains no spectra"});
}

TEST_F(ExportFormTest, TheAuxiliaryAD590EntryShowsTheSettingAndCountsOnlyForItsFormat) {
  Export_Form* form = open(ViewKind::ExportAuxiliary);
  EXPECT_EQ(form->ad590Field()->text().toStdString(), ad590_temperature_text(window->session().config));
  EXPECT_FALSE(form->ad590Field()->isEnabled());
  form->formatOption(3)->click();
  EXPECT_TRUE(form->ad590Field()->isEnabled());

  form->ad590Field()->setText("warm");
  form->exportButton()->click();
  EXPECT_EQ(dialogs.messages, std::vector<QString>{"AD590 temperature not valid"});
  EXPECT_EQ(form->ad590Field()->text().toStdString(), ad590_temperature_text(window->session().config));
  EXPECT_EQ(dialogs.count("file"), 0);
}

TEST_F(ExportFormTest, AnInvalidRangeIsItsMessageThenTheBoxesAreResetAndNoFileIsAskedFor) {
  Export_Form* form = open(ViewKind::ExportDockingStationCalibration);
  const QString count = QString::number(calibrationCount());
  form->allBox()->click();
  form->fromField()->setText("2");
  form->toField()->setText(QString::number(calibrationCount() + 1));
  QString from_at_message;
  dialogs.on_message = [&] { from_at_message = form->fromField()->text(); };
  form->exportButton()->click();
  EXPECT_EQ(dialogs.messages, std::vector<QString>{"DS calibration ranges not valid"});
  EXPECT_EQ(dialogs.events, std::vector<std::string>{"message"});  // no file dialog
  EXPECT_EQ(from_at_message, "2");                                   // the boxes are reset after the message
  EXPECT_EQ(form->fromField()->text(), "1");
  EXPECT_EQ(form->toField()->text(), count);
  EXPECT_TRUE(form->fromField()->isEnabled());  // All stays cleared
  EXPECT_EQ(window->view(ViewKind::ExportDockingStationCalibration), form);
}

TEST_F(ExportFormTest, ACancelledFileChoiceOrAFileThatCannotBeCreatedEndsSilentlyAndCancelWritesNothing) {
  const auto before = filesInFolder();
  for (const ViewKind kind : kExportKinds) {
    Export_Form* form = open(kind);
    dialogs.files.push_back(QString());
    form->exportButton()->click();
    EXPECT_EQ(window->view(kind), form);
  }
  EXPECT_EQ(dialogs.count("file"), 4);
  exportTo(open(ViewKind::ExportHousekeeping), "no such folder/hk.txt");
  EXPECT_TRUE(no_message());
  EXPECT_EQ(filesInFolder(), before);

  dialogs.events.clear();
  open(ViewKind::ExportDockingStationCalibration)->cancelButton()->click();
  testing::delete_closed_windows();
  EXPECT_EQ(window->view(ViewKind::ExportDockingStationCalibration), nullptr);
  EXPECT_EQ(filesInFolder(), before);
  EXPECT_TRUE(dialogs.events.empty());
}

TEST_F(ExportFormTest, EachDialogWritesWhatTheCommandLineWritesForTheSameChoices) {
  // Housekeeping 2..5, semicolons, AD590-corrected, three sensors.
  Export_Form* hk = open(ViewKind::ExportHousekeeping);
  hk->allBox()->click();
  hk->fromField()->setText("2");
  hk->toField()->setText("5");
  hk->delimiterOption(2)->click();
  hk->formatOption(2)->click();
  for (size_t i = 0; i < hk->sensorBoxes().size(); ++i) hk->sensorBoxes()[i]->setChecked(i == 0 || i == 27 || i == 28);
  exportTo(hk, "hk.csv");
  const std::string hk_file = testing::read_file(dir.path("hk.csv"));
  EXPECT_EQ(hk_file, cliExport("hk",
                               {"--from", "2", "--to", "5", "--delimiter", "semicolon", "--format", "calibrated-ad590",
                                "--sensors", "1,28,29"},
                               "hk_cli.csv"));
  EXPECT_EQ(hk_file.substr(0, hk_file.find('\r')), "Housekeeping - Calibrated Data (with AD590 correction)");

  // Spectra 2..3 for charts.
  Export_Form* spectra = open(ViewKind::ExportSpectra);
  spectra->allBox()->click();
  spectra->fromField()->setText("2");
  spectra->toField()->setText("3");
  EXPECT_EQ(spectra->formatOption(1)->text(), "Data proceesed for excel graphs");
  spectra->formatOption(1)->click();
  exportTo(spectra, "spectra.txt");
  const std::string spectra_file = testing::read_file(dir.path("spectra.txt"));
  EXPECT_EQ(spectra_file,
            cliExport("spectra", {"--from", "2", "--to", "3", "--delimiter", "tab", "--format", "excel"},
                      "spectra_cli.txt"));
  EXPECT_NE(spectra_file.find("Bin No.\tSpec. 2\tSpec. 3\r\n"), std::string::npos);

  // Each dialog stays open with no message.
  EXPECT_TRUE(no_message());
  EXPECT_NE(window->view(ViewKind::ExportHousekeeping), nullptr);
}

TEST_F(ExportFormTest, ARunTimeErrorIsShownAndTheDialogStays) {
  // A spectrum whose bins run past 1024.
  FrameWriter writer(282);
  writer.add_frame({testing::isotope_packet({2, 1020, {16, 16, 16, 16, 16, 16, 16, 16}})});
  ASSERT_TRUE(window->loadFile(FileFormat::QM, write_frames("bad.qm", writer)));
  Export_Form* form = open(ViewKind::ExportSpectra);
  ASSERT_NE(form, nullptr);
  testing::write_file(dir.path("spectra.txt"), "a previous export\r\n");
  exportTo(form, "spectra.txt");
  EXPECT_TRUE(one_message("Subscript out of range"));
  EXPECT_TRUE(dialogs.messages[0].contains("; Error number 9")) << dialogs.messages[0].toStdString();
  EXPECT_TRUE(dialogs.messages[0].contains(QString::fromStdString(dir.path("spectra.txt") + " is left as it was")));
  EXPECT_EQ(testing::read_file(dir.path("spectra.txt")), "a previous export\r\n");
  EXPECT_EQ(window->view(ViewKind::ExportSpectra), form);
}

TEST_F(ExportFormTest, AnExportThroughALinkReplacesItsTargetAndACancelKeepsTheLinesBesideIt) {
  std::filesystem::create_directory(dir.path("exports"));
  testing::write_file(dir.path("exports/hk.txt"), "a previous export\r\n");
  std::filesystem::create_symlink("exports/hk.txt", dir.path("latest.txt"));
  Export_Form* hk = open(ViewKind::ExportHousekeeping);
  exportTo(hk, "latest.txt");
  EXPECT_TRUE(no_message());
  EXPECT_TRUE(std::filesystem::is_symlink(dir.path("latest.txt")));
  const std::string exported = testing::read_file(dir.path("exports/hk.txt"));
  EXPECT_EQ(exported.substr(0, 23), "Housekeeping - Raw data");

  // Cancelled at the first progress report: the file stays, the lines so far are beside it.
  QTimer cancel;
  QObject::connect(&cancel, &QTimer::timeout, [&] {
    if (auto* progress = hk->findChild<QProgressDialog*>("ExportProgress")) progress->cancel();
  });
  cancel.start(0);
  exportTo(hk, "exports/hk.txt");
  cancel.stop();
  EXPECT_EQ(testing::read_file(dir.path("exports/hk.txt")), exported);
  ASSERT_TRUE(one_message("Export cancelled: "));
  EXPECT_TRUE(dialogs.messages[0].contains(QString::fromStdString(dir.path("exports/hk.partial.txt"))));
  const std::string kept = testing::read_file(dir.path("exports/hk.partial.txt"));
  EXPECT_EQ(exported.substr(0, kept.size()), kept);
}

}  // namespace
}  // namespace morvane
