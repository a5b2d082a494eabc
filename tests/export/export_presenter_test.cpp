// SPDX-License-Identifier: MIT
#include "export/export_presenter.h"

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "core/safe_file.h"
#include "export_fixture.h"
#include "folder_names.h"

namespace morvane {
namespace {

using testing::aux_packet;
using testing::gc_packet;
using testing::hk_packet;
using testing::isotope_packet;
using testing::sensor_bytes;

class ExportDialog : public testing::ExportTest {
 protected:
  void SetUp() override {
    ExportTest::SetUp();
    // 3 housekeeping packets; science: an auxiliary packet with two docking-station readings, a
    // complete spectrum of two sub-packets, a GC spectrum: 5 science entries, 5 docking-station
    // entries, 2 spectra.
    load({hk_packet(2, sensor_bytes({{29, 10}}), {}, 1, 1000), hk_packet(2, {}, {}, 2, 1001),
          aux_packet({{0, 1, 29, 0}, {0, 2, 29, 0}}), hk_packet(1, {}, {}, 3, 1002),
          isotope_packet({2, 0, {0x10}}), isotope_packet({0, 1, {0x10}}), gc_packet({0, 0, {0x10}}),
          aux_packet({{0, 3, 101, 0}})});
  }
};

TEST_F(ExportDialog, AnInvalidRangeGivesTheDialogsMessageAndResetsTheBoxes) {
  for (const ExportKind kind :
       {ExportKind::Housekeeping, ExportKind::Auxiliary, ExportKind::DS_Calibration, ExportKind::Spectra}) {
    ExportPresenter dialog(kind, session);
    dialog.range().Check2_Click(false);
    dialog.range().set_from_text("2.5");
    const auto validation = dialog.Command1_Click();
    EXPECT_FALSE(validation.request);
    EXPECT_EQ(validation.message, dialog.texts().invalid_range);
    EXPECT_EQ(dialog.range().from_text(), "1");
    EXPECT_EQ(dialog.range().to_text(), std::to_string(dialog.range().limit()));
  }
}

TEST_F(ExportDialog, TheAD590EntryMustBeANumberForTheAD590Format) {
  ExportPresenter dialog(ExportKind::Auxiliary, session);
  dialog.ad590_text = "warm";
  EXPECT_TRUE(dialog.Command1_Click().request);  // other formats do not read it
  dialog.format = 3;
  const auto refused = dialog.Command1_Click();
  EXPECT_FALSE(refused.request);
  EXPECT_EQ(refused.message, "AD590 temperature not valid");
  EXPECT_EQ(dialog.ad590_text, "0.00");
  dialog.ad590_text = "25";
  const auto accepted = dialog.Command1_Click();
  ASSERT_TRUE(accepted.request);
  EXPECT_EQ(accepted.request->ad590_celsius, 25);
}

TEST_F(ExportDialog, GuardsNeedAFileAndForSpectraSomeSpectra) {
  EXPECT_EQ(export_guard(Session{}, ExportKind::Housekeeping), "Please load an EGSE data file");
  EXPECT_EQ(export_guard(Session{}, ExportKind::Spectra), "Please load an EGSE data file");
  EXPECT_EQ(export_guard(session, ExportKind::Spectra), std::nullopt);
  load({hk_packet(2)});
  EXPECT_EQ(export_guard(session, ExportKind::Housekeeping), std::nullopt);
  EXPECT_EQ(export_guard(session, ExportKind::Spectra), "The EGSE data file contains no spectra");
}

TEST_F(ExportDialog, AFileThatCannotBeCreatedEndsTheExportSilently) {
  const ExportPresenter dialog(ExportKind::Housekeeping, session);
  const ExportRequest request;
  EXPECT_EQ(dialog.open_output(dir.path("missing/out.txt"), ExportFileType::Delimited_Text, request), nullptr);
  EXPECT_EQ(dialog.open_output(dir.path("missing/out.xlsx"), ExportFileType::Workbook, request), nullptr);
  EXPECT_FALSE(std::filesystem::exists(dir.path("missing")));
  if (::geteuid() != 0) {
    testing::write_file(dir.path("locked.txt"), "old\n");
    ::chmod(dir.path("locked.txt").c_str(), 0444);
    EXPECT_EQ(dialog.open_output(dir.path("locked.txt"), ExportFileType::Delimited_Text, request), nullptr);
  }
}

TEST_F(ExportDialog, ACancelKeepsTheLinesWrittenSoFarBesideTheChosenFile) {
  for (const char* name : {"hk.txt", "hk.xlsx"}) {
    ExportPresenter dialog(ExportKind::Housekeeping, session);
    dialog.sensors.assign(36, false);
    const auto request = dialog.Command1_Click().request;
    const std::string path = dir.path(name);
    const auto output = dialog.open_output(path, export_file_type(path), *request);
    std::vector<int64_t> reports;
    const ExportResult result = dialog.write(session, *request, *output, [&](int64_t done, int64_t total) {
      EXPECT_EQ(total, 3);
      reports.push_back(done);
      return done < 2;  // the user cancels after two rows
    });
    EXPECT_TRUE(result.cancelled);
    EXPECT_EQ(result.rows, 2);
    EXPECT_EQ(reports, (std::vector<int64_t>{0, 1, 2}));
    EXPECT_EQ(output->partial_path(), partial_path(path));
    EXPECT_FALSE(std::filesystem::exists(path));  // the chosen name is never a fragment
    if (export_file_type(path) == ExportFileType::Workbook) {
      EXPECT_EQ(testing::read_sheet(output->partial_path()).size(), 6u);
    } else {
      EXPECT_EQ(testing::read_file(output->partial_path()), "Housekeeping - Raw data\r\nHK number\tLander time\t\r\n"
                                                            "     \tseconds\t\r\n\r\n1\t1000\t\r\n2\t1001\t\r\n");
    }
  }
  EXPECT_EQ(testing::names_in(dir.root()).size(), 4u);  // base, t.dat and the two partial exports
}

TEST_F(ExportDialog, AnErrorLeavesThePreviousFileAndIsRethrownSayingSo) {
  // The second spectrum's sub-packet writes past bin 1024: the spectra are read before any line.
  load({isotope_packet({2, 0, {0x10}}), isotope_packet({2, 1024, {0x10, 0x10}})});
  testing::write_file(dir.path("spectra.txt"), "old\n");
  ExportPresenter dialog(ExportKind::Spectra, session);
  const auto request = dialog.Command1_Click().request;
  const auto output = dialog.open_output(dir.path("spectra.txt"), ExportFileType::Delimited_Text, *request);
  const std::string message = testing::thrown([&] { dialog.write(session, *request, *output); }).message;
  EXPECT_PRED2(testing::contains, message, "; Error number 9");
  EXPECT_PRED2(testing::contains, message, dir.path("spectra.txt") + " is left as it was");
  EXPECT_EQ(testing::read_file(dir.path("spectra.txt")), "old\n");
  EXPECT_FALSE(std::filesystem::exists(dir.path("spectra.partial.txt")));  // no line was written
}

TEST_F(ExportDialog, AWorkbookThatCannotHoldTheExportFailsBeforeAnyFileIsMade) {
  // The entries in the range and what the sheet cannot hold (or nothing). Four heading lines come
  // before the housekeeping rows, five before the docking-station rows; the spectra take a column
  // each after the bin numbers.
  const std::tuple<ExportKind, int32_t, const char*> cases[] = {{ExportKind::Housekeeping, 1048572, nullptr},
                        {ExportKind::Housekeeping, 1048573, "1048576 rows"},
                        {ExportKind::DS_Calibration, 1048571, nullptr},
                        {ExportKind::DS_Calibration, 1048572, "1048576 rows"},
                        {ExportKind::Spectra, 16383, nullptr},
                        {ExportKind::Spectra, 16384, "16384 columns"},
                        {ExportKind::Auxiliary, 2000000, nullptr}};  // known only while it writes
  load({hk_packet(1, sensor_bytes({}), {}, 1, 1000), gc_packet({1, 0, {0x10}})});
  for (const auto& [kind, entries, refused] : cases) {
    ExportPresenter dialog(kind, session);
    ExportRequest request = *dialog.Command1_Click().request;
    request.range = {1, entries};
    const std::string path = dir.path("out.xlsx");
    EXPECT_NO_THROW(dialog.check_fits(dir.path("out.txt"), ExportFileType::Delimited_Text, request));
    if (refused) {
      const auto error = testing::thrown([&] { dialog.check_fits(path, ExportFileType::Workbook, request); });
      EXPECT_EQ(error.number, 9) << entries;
      EXPECT_PRED2(testing::contains, error.message, path + ": an .xlsx sheet holds at most " + refused);
    } else {
      EXPECT_NO_THROW(dialog.check_fits(path, ExportFileType::Workbook, request)) << entries;
    }
  }
}

}  // namespace
}  // namespace morvane
