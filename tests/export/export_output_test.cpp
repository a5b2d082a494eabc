// SPDX-License-Identifier: MIT
// What an export's write adds to the replacement file's rules (core/safe_file_test), for both file
// types: a full disk says where the lines written so far are kept (NAME.partial.EXT) and leaves
// the previous file; a workbook streams into a pipe.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <thread>

#include "child_process.h"
#include "core/safe_file.h"
#include "export/export_output.h"
#include "export_fixture.h"
#include "folder_names.h"

namespace morvane {
namespace {

namespace fs = std::filesystem;

constexpr const char* kOld = "the previous export\r\n";

// Lines of an export: a number, a text and a number pattern in each.
void write_lines(ExportOutput& output, int lines) {
  for (int i = 1; i <= lines; ++i) {
    output.number(i, std::to_string(i));
    output.text("reading");
    output.number(i * 0.25, std::to_string(i * 0.25), "0.00");
    output.end_line(true);
  }
}

// Writes lines to path as an export does: finished, or on an error abandoned.
void export_lines(const std::string& path, int lines) {
  const auto output = open_export_output(path, export_file_type(path), '\t', "Sheet");
  try {
    write_lines(*output, lines);
    output->finish();
  } catch (...) {
    output->abandon();
  }
}

class ExportOutputTest : public ::testing::TestWithParam<const char*> {
 protected:
  void SetUp() override {
    fs::create_directory(dir.path("out"));
    path = dir.path(std::string("out/") + GetParam());
    testing::write_file(path, kOld);
  }
  bool workbook() const { return export_file_type(path) == ExportFileType::Workbook; }

  testing::TempDir dir;
  std::string path;
};

TEST_P(ExportOutputTest, AFullDiskLeavesThePreviousFileAndSaysWhere) {
  const testing::ChildEnd end = testing::in_child([&] {
    testing::limit_file_size(256 * 1024);
    export_lines(path, 200000);
  });
  EXPECT_EQ(end.exit_status, 1);
  EXPECT_EQ(end.error.rfind("Disk full: " + path, 0), 0u) << end.error;
  EXPECT_PRED2(testing::contains, end.error, "disk full");
  EXPECT_PRED2(testing::contains, end.error, path + " is left as it was");
  EXPECT_EQ(testing::read_file(path), kOld);
  const std::string partial = partial_path(path);
  std::vector<std::string> expected{fs::path(path).filename().string()};
  // Whole text lines as far as the disk took them; the rows of a workbook that opens, if any reached it.
  if (!workbook() || fs::exists(partial)) {
    EXPECT_PRED2(testing::contains, end.error, "the lines written so far are in " + partial);
    expected.insert(expected.begin(), fs::path(partial).filename().string());
  }
  if (workbook()) {
    EXPECT_TRUE(!fs::exists(partial) || !testing::read_sheet(partial).empty());
  } else {
    const std::string kept = testing::read_file(partial);
    ASSERT_GT(kept.size(), 0u);
    EXPECT_EQ(kept.substr(kept.size() - 2), "\r\n");
    EXPECT_EQ(kept.substr(0, 21), "1\treading\t0.250000\t\r\n");
  }
  EXPECT_EQ(testing::names_in(dir.path("out")), expected);  // no temporary file is left
}

TEST_P(ExportOutputTest, APipeIsWrittenInPlaceAndInOrder) {
  const std::string pipe = dir.path("out/pipe");
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  std::string received;
  std::thread reader([&] { received = testing::read_file(pipe); });
  const auto output = open_export_output(pipe, export_file_type(path), '\t', "Sheet");
  write_lines(*output, 3000);
  output->finish();
  reader.join();
  export_lines(path, 3000);  // the same export to a regular file
  if (workbook()) {
    testing::write_file(dir.path("received.xlsx"), received);
    EXPECT_EQ(testing::read_sheet(dir.path("received.xlsx")).size(), 3000u);
  } else {
    EXPECT_EQ(received, testing::read_file(path));
  }
  EXPECT_EQ(fs::status(pipe).type(), fs::file_type::fifo);
}

INSTANTIATE_TEST_SUITE_P(TextAndWorkbook, ExportOutputTest, ::testing::Values("export.txt", "export.xlsx"),
                         [](const auto& info) { return std::string(info.param).substr(7); });

}  // namespace
}  // namespace morvane
