// SPDX-License-Identifier: MIT
// The four export dialogs: the menu's guards, their captions and defaults, the range checks, the
// file choice, and files that are byte for byte what the command line writes.
#include <algorithm>
#include <filesystem>

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QProgressDialog>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>

#include "../export/export_fixture.h"
#include "app_fixture.h"
#include "core/error.h"
#include "export/ds_calibration_export.h"
#include "export_form.h"
#include "twips.h"
#include "views/auxiliary_view.h"
#include "views/spectrum_table.h"

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

QStringList label_texts(const QWidget* parent) {
  QStringList texts;
  for (const QLabel* label : parent->findChildren<QLabel*>()) texts << label->text();
  return texts;
}

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
  int32_t limitOf(ViewKind kind) const {
    const Session& session = window->session();
    switch (kind) {
      case ViewKind::ExportAuxiliary: return session.catalogue.Science_Count();
      case ViewKind::ExportDockingStationCalibration: return DS_Calibration_Index(session).count();
      case ViewKind::ExportSpectra: return build_spectrum_table(session.catalogue).spectrum_count();
      default: return session.catalogue.HK_Count();
    }
  }

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
  writer.add_frame({Packet{0x0F34, 3, 51, 0, 1000, {{16, 2}}, {}}});
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

TEST_F(ExportFormTest, EachDialogShowsItsCaptionsAndOpensOnEveryEntryTabAndTheFirstFormat) {
  struct Case {
    ViewKind kind;
    const char* name;
    const char* caption;
    const char* range_frame;
    const char* format_frame;
    QStringList formats;
  };
  const Case cases[] = {
      {ViewKind::ExportHousekeeping,
       "Export_HK",
       "Export housekeeping data to excel",
       "HK Packets",
       "Data Format",
       {"Raw Data", "Calibrated Data         (no AD590 correction)",
        "Calibrated Data         (with AD590 correction)"}},
      {ViewKind::ExportAuxiliary,
       "Export_Aux",
       "Export Auxiliary data to excel",
       "Aux Packets",
       "Data Format",
       {"ADC Values", "Sensor Voltages", "Calibrated Data         (no AD590 correction)",
        "Calibrated Data         (with AD590 correction)"}},
      {ViewKind::ExportDockingStationCalibration,
       "Export_DS_Cal",
       "Export docking station calibration data to excel",
       "DS Calibration",
       "Data format",
       {"Distance (mm)", "ADC Values", "Sensor Voltages"}},
      {ViewKind::ExportSpectra,
       "Export_Spectra",
       "Export spectra to excel",
       "Spectra",
       "Data format",
       {"Raw Data ", "Data proceesed for excel graphs"}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    Export_Form* form = open(c.kind);
    ASSERT_NE(form, nullptr);
    EXPECT_EQ(form->objectName(), c.name);
    EXPECT_EQ(form->windowTitle(), c.caption);
    EXPECT_EQ(form->findChild<QGroupBox*>("Frame1")->title(), c.range_frame);
    EXPECT_EQ(form->findChild<QGroupBox*>("Frame2")->title(), "Deliminator");
    EXPECT_EQ(form->findChild<QGroupBox*>("Frame3")->title(), c.format_frame);
    EXPECT_TRUE(label_texts(form).contains("From"));
    EXPECT_TRUE(label_texts(form).contains("To"));

    const int32_t limit = limitOf(c.kind);
    EXPECT_GT(limit, 1);
    EXPECT_EQ(form->fromField()->text(), "1");
    EXPECT_EQ(form->toField()->text(), QString::number(limit));
    EXPECT_FALSE(form->fromField()->isEnabled());
    EXPECT_FALSE(form->toField()->isEnabled());
    EXPECT_EQ(form->allBox()->text(), "All");
    EXPECT_TRUE(form->allBox()->isChecked());

    const QStringList delimiters{"Tab", "Comma", "Semicolon"};
    for (int i = 0; i < 3; ++i) {
      EXPECT_EQ(form->delimiterOption(i)->text(), delimiters[i]);
      EXPECT_EQ(form->delimiterOption(i)->objectName(), QStringLiteral("Option%1").arg(i + 1));
      EXPECT_EQ(form->delimiterOption(i)->isChecked(), i == 0);
    }
    ASSERT_EQ(form->formatCount(), c.formats.size());
    for (int i = 0; i < form->formatCount(); ++i) {
      EXPECT_EQ(form->formatOption(i)->text(), c.formats[i]);
      EXPECT_EQ(form->formatOption(i)->objectName(), QStringLiteral("Option%1").arg(i + 4));
      EXPECT_EQ(form->formatOption(i)->isChecked(), i == 0);
    }
    EXPECT_EQ(form->exportButton()->text(), "Export");
    EXPECT_EQ(form->cancelButton()->text(), "Cancel");
    EXPECT_EQ(form->sensorBoxes().empty(), c.kind != ViewKind::ExportHousekeeping);
    EXPECT_EQ(form->ad590Field() == nullptr, c.kind != ViewKind::ExportAuxiliary);
  }
}

TEST_F(ExportFormTest, TheHousekeepingDialogHasATickedBoxPerSensorHeadedByItsName) {
  Export_Form* form = open(ViewKind::ExportHousekeeping);
  const std::vector<Sensor_Record>& sensors = window->session().config.Sensor_Table;
  ASSERT_EQ(form->sensorBoxes().size(), sensors.size());
  ASSERT_EQ(sensors.size(), 36u);
  for (size_t i = 0; i < sensors.size(); ++i) {
    EXPECT_EQ(form->sensorBoxes()[i]->text().toStdString(), sensors[i].Sensor_Name) << i;
    EXPECT_TRUE(form->sensorBoxes()[i]->isChecked()) << i;
  }
  EXPECT_EQ(form->sensorBoxes()[28]->text(), "Docking Stn");
}

TEST_F(ExportFormTest, TheAuxiliaryAD590EntryShowsTheSettingAndCountsOnlyForItsFormat) {
  Export_Form* form = open(ViewKind::ExportAuxiliary);
  EXPECT_EQ(form->ad590Field()->text().toStdString(), ad590_temperature_text(window->session().config));
  EXPECT_TRUE(label_texts(form).contains("AD590 temperature"));
  EXPECT_FALSE(form->ad590Field()->isEnabled());
  form->formatOption(3)->click();
  EXPECT_TRUE(form->ad590Field()->isEnabled());

  form->ad590Field()->setText("warm");
  form->exportButton()->click();
  EXPECT_EQ(dialogs.messages, std::vector<QString>{"AD590 temperature not valid"});
  EXPECT_EQ(form->ad590Field()->text().toStdString(), ad590_temperature_text(window->session().config));
  EXPECT_EQ(dialogs.count("file"), 0);
}

TEST_F(ExportFormTest, AllDisablesTheBoxesWithOneAndTheCountAndClearingItLeavesThemEditable) {
  Export_Form* form = open(ViewKind::ExportHousekeeping);
  const QString count = QString::number(window->session().catalogue.HK_Count());
  form->allBox()->click();
  EXPECT_FALSE(form->allBox()->isChecked());
  EXPECT_TRUE(form->fromField()->isEnabled());
  EXPECT_TRUE(form->toField()->isEnabled());
  EXPECT_EQ(form->fromField()->text(), "1");
  EXPECT_EQ(form->toField()->text(), count);

  form->fromField()->setText("3");
  form->toField()->setText("4");
  form->allBox()->click();
  EXPECT_FALSE(form->fromField()->isEnabled());
  EXPECT_EQ(form->fromField()->text(), "1");
  EXPECT_EQ(form->toField()->text(), count);
}

TEST_F(ExportFormTest, AnInvalidRangeIsItsMessageThenTheBoxesAreResetAndNoFileIsAskedFor) {
  struct Case {
    ViewKind kind;
    QString from;
    QString to;  // "over" for the count plus one
    const char* message;
  };
  const Case cases[] = {
      {ViewKind::ExportHousekeeping, "2.5", "3", "Housekeeping packet ranges not valid"},
      {ViewKind::ExportHousekeeping, "0", "3", "Housekeeping packet ranges not valid"},
      {ViewKind::ExportHousekeeping, "1", "over", "Housekeeping packet ranges not valid"},
      {ViewKind::ExportHousekeeping, "4", "3", "Housekeeping packet ranges not valid"},
      {ViewKind::ExportHousekeeping, "one", "3", "Housekeeping packet ranges not valid"},
      {ViewKind::ExportAuxiliary, "2.5", "3", "Science packet ranges not valid"},
      {ViewKind::ExportDockingStationCalibration, "0", "3", "DS calibration ranges not valid"},
      {ViewKind::ExportSpectra, "1", "over", "Science packet ranges not valid"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.from.toStdString() + ".." + c.to.toStdString());
    Export_Form* form = open(c.kind);
    const QString count = QString::number(limitOf(c.kind));
    form->allBox()->click();
    form->fromField()->setText(c.from);
    form->toField()->setText(c.to == "over" ? QString::number(limitOf(c.kind) + 1) : c.to);
    dialogs.messages.clear();
    dialogs.events.clear();
    QString from_at_message;
    dialogs.on_message = [&] { from_at_message = form->fromField()->text(); };
    form->exportButton()->click();
    dialogs.on_message = nullptr;
    EXPECT_EQ(dialogs.messages, std::vector<QString>{c.message});
    EXPECT_EQ(dialogs.events, std::vector<std::string>{"message"});  // no file dialog
    EXPECT_EQ(from_at_message, c.from);                                // the boxes are reset after the message
    EXPECT_EQ(form->fromField()->text(), "1");
    EXPECT_EQ(form->toField()->text(), count);
    EXPECT_TRUE(form->fromField()->isEnabled());  // All stays cleared
    EXPECT_EQ(window->view(c.kind), form);
    window->closeView(c.kind);
  }
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

  // Auxiliary, every science entry, commas, corrected at 25.5 oC.
  Export_Form* aux = open(ViewKind::ExportAuxiliary);
  aux->delimiterOption(1)->click();
  aux->formatOption(3)->click();
  aux->ad590Field()->setText("25.5");
  exportTo(aux, "aux.csv");
  EXPECT_EQ(testing::read_file(dir.path("aux.csv")),
            cliExport("aux", {"--all", "--delimiter", "comma", "--format", "calibrated-ad590", "--ad590", "25.5"},
                      "aux_cli.csv"));

  // Docking station, positions.
  Export_Form* ds = open(ViewKind::ExportDockingStationCalibration);
  exportTo(ds, "ds.txt");
  EXPECT_EQ(testing::read_file(dir.path("ds.txt")),
            cliExport("dscal", {"--all", "--delimiter", "tab", "--format", "distance"}, "ds_cli.txt"));

  // Spectra 2..3 for charts.
  Export_Form* spectra = open(ViewKind::ExportSpectra);
  spectra->allBox()->click();
  spectra->fromField()->setText("2");
  spectra->toField()->setText("3");
  spectra->formatOption(1)->click();
  exportTo(spectra, "spectra.txt");
  const std::string spectra_file = testing::read_file(dir.path("spectra.txt"));
  EXPECT_EQ(spectra_file,
            cliExport("spectra", {"--from", "2", "--to", "3", "--delimiter", "tab", "--format", "excel"},
                      "spectra_cli.txt"));
  EXPECT_NE(spectra_file.find("Bin No.\tSpec. 2\tSpec. 3\r\n"), std::string::npos);

  // Each dialog stays open with no message.
  EXPECT_TRUE(no_message());
  for (const ViewKind kind : kExportKinds) EXPECT_NE(window->view(kind), nullptr) << view_name(kind);
}

TEST_F(ExportFormTest, AWorkbookFileTypeWritesTheSameCellsAsTheCommandLine) {
  Export_Form* form = open(ViewKind::ExportHousekeeping);
  form->formatOption(1)->click();
  exportTo(form, "hk.xlsx");
  cliExport("hk", {"--all", "--delimiter", "tab", "--format", "calibrated"}, "hk_cli.xlsx");
  const testing::Sheet sheet = testing::read_sheet(dir.path("hk.xlsx"));
  const testing::Sheet expected = testing::read_sheet(dir.path("hk_cli.xlsx"));
  ASSERT_EQ(sheet.size(), static_cast<size_t>(window->session().catalogue.HK_Count()) + 4);
  ASSERT_EQ(sheet.size(), expected.size());
  for (size_t r = 0; r < sheet.size(); ++r) {
    ASSERT_EQ(sheet[r].size(), expected[r].size()) << r;
    for (size_t c = 0; c < sheet[r].size(); ++c) {
      EXPECT_EQ(sheet[r][c].kind, expected[r][c].kind) << r << ',' << c;
      EXPECT_EQ(sheet[r][c].text, expected[r][c].text) << r << ',' << c;
      EXPECT_EQ(sheet[r][c].value, expected[r][c].value) << r << ',' << c;
    }
  }
  EXPECT_EQ(sheet[0][0].text, "Housekeeping - Calibrated Data (no AD590 correction)");
  EXPECT_EQ(sheet[4][0].kind, testing::Sheet_Cell::Number);
  EXPECT_EQ(sheet[4][0].value, 1);
  EXPECT_TRUE(no_message());
}

TEST_F(ExportFormTest, ARunTimeErrorIsShownAndTheDialogStays) {
  // A spectrum whose bins run past 1024.
  FrameWriter writer(282);
  writer.add_frame({testing::isotope_packet({2, 1020, {16, 16, 16, 16, 16, 16, 16, 16}})});
  ASSERT_TRUE(window->loadFile(FileFormat::QM, write_frames("bad.qm", writer)));
  Export_Form* form = open(ViewKind::ExportSpectra);
  ASSERT_NE(form, nullptr);
  exportTo(form, "spectra.txt");
  EXPECT_TRUE(one_message("Subscript out of range"));
  EXPECT_TRUE(dialogs.messages[0].contains("; Error number 9")) << dialogs.messages[0].toStdString();
  EXPECT_EQ(window->view(ViewKind::ExportSpectra), form);
}

TEST_F(ExportFormTest, ExportCountsTheEntriesOfTheFileLoadedSinceTheDialogOpened) {
  Export_Form* form = open(ViewKind::ExportHousekeeping);
  std::vector<Packet> packets;
  for (int32_t t = 0; t < 3; ++t) packets.push_back(Packet{0x0F34, 3 + t, 51, 0, 5000 + t, {{16, 2}}, {}});
  ASSERT_TRUE(load_packets(packets, "three.css"));
  ASSERT_EQ(window->view(ViewKind::ExportHousekeeping), form);
  for (QCheckBox* box : form->sensorBoxes()) box->setChecked(false);
  exportTo(form, "hk.txt");
  EXPECT_EQ(form->toField()->text(), "3");
  EXPECT_EQ(testing::read_file(dir.path("hk.txt")),
            "Housekeeping - Raw data\r\nHK number\tLander time\t\r\n     \tseconds\t\r\n\r\n"
            "1\t5000\t\r\n2\t5001\t\r\n3\t5002\t\r\n");
}

TEST_F(ExportFormTest, ACancelledLongExportKeepsTheLinesWrittenSoFar) {
  telemetry = load_simulated(FileFormat::QM, "long.qm", 3000).toStdString();  // five cycles of the instrument
  const int32_t count = window->session().catalogue.HK_Count();
  ASSERT_GT(count, 1000);

  Export_Form* form = open(ViewKind::ExportHousekeeping);
  form->formatOption(1)->click();
  auto expected_files = filesInFolder();
  expected_files.push_back("hk.txt");
  std::sort(expected_files.begin(), expected_files.end());
  // The progress dialog is cancelled a tenth of the way through.
  QTimer canceller;
  bool cancelled = false;
  QObject::connect(&canceller, &QTimer::timeout, [&] {
    auto* progress = form->findChild<QProgressDialog*>();
    if (progress && !cancelled && progress->value() >= 100) {
      progress->cancel();
      cancelled = true;
    }
  });
  canceller.start(0);
  exportTo(form, "hk.txt");
  canceller.stop();
  ASSERT_TRUE(cancelled);
  EXPECT_TRUE(no_message());
  EXPECT_EQ(filesInFolder(), expected_files);  // the hidden file it was written into is gone
  EXPECT_EQ(window->view(ViewKind::ExportHousekeeping), form);

  const std::string partial = testing::read_file(dir.path("hk.txt"));
  const std::string whole = cliExport("hk", {"--all", "--delimiter", "tab", "--format", "calibrated"}, "hk_cli.txt");
  ASSERT_LT(partial.size(), whole.size());
  EXPECT_EQ(whole.compare(0, partial.size(), partial), 0);  // whole lines of the full export
  EXPECT_EQ(partial.substr(partial.size() - 2), "\r\n");
  const auto rows = std::count(partial.begin(), partial.end(), '\n') - 4;
  EXPECT_GE(rows, count / 20);
  EXPECT_LT(rows, count / 2);
}

}  // namespace
}  // namespace morvane
