// SPDX-License-Identifier: MIT
// Sessions over small crafted files for the export tests, the text a writer produces, and the
// cells of a workbook's sheet.
#pragma once

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <map>
#include <regex>
#include <string>
#include <utility>
#include <vector>

#include "../decoders/decoder_fixture.h"
#include "export/export_output.h"
#include "thrown.h"

namespace morvane::testing {

// The export tests' session: the simulated instrument's configuration (sensor s at packet byte
// 21 + s; 29 the docking station, 2^7 counts a step, 5.2 mm a volt).
class ExportTest : public DecoderTest {
 protected:
  // What write puts into a delimited text file (or, with a name ending .xlsx, a workbook).
  std::string written(const std::function<void(LineSink&)>& write, char delimiter = '\t',
                      const std::string& name = "out.txt") {
    const auto output = open_export_output(dir.path(name), export_file_type(name), delimiter, "Sheet");
    write(*output);
    output->finish();
    return read_file(dir.path(name));
  }
  // The run-time error number a write to a delimited text file fails with (0: none), and the lines
  // it kept as out.partial.txt; the chosen name never appears.
  std::pair<int, std::string> failed_write(const std::function<void(LineSink&)>& write, char delimiter = '\t') {
    const auto output = open_export_output(dir.path("out.txt"), ExportFileType::Delimited_Text, delimiter, "Sheet");
    const int number = thrown([&] { write(*output); }).number;
    output->keep_partial();
    EXPECT_FALSE(std::filesystem::exists(dir.path("out.txt")));
    return {number, read_file(dir.path("out.partial.txt"))};
  }
};

// A cell of a sheet: absent, a text or a number.
struct SheetCell {
  enum Kind { Absent, Text, Number } kind = Absent;
  std::string text;
  double value = 0;
};
using Sheet = std::vector<std::vector<SheetCell>>;  // rows from 1, columns from A, as [row - 1][column]

// The cells of the first sheet of an .xlsx file, read from its XML (unzipped by the unzip command).
inline Sheet read_sheet(const std::string& path) {
  const std::string command = "unzip -p '" + path + "' xl/worksheets/sheet1.xml";
  FILE* pipe = ::popen(command.c_str(), "r");
  std::string xml;
  char buffer[65536];
  for (size_t n; pipe != nullptr && (n = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;) xml.append(buffer, n);
  if (pipe != nullptr) ::pclose(pipe);

  Sheet sheet;
  static const std::regex k_cell(R"re(<c r="([A-Z]+)([0-9]+)"([^>]*)>(.*?)</c>)re");
  static const std::regex k_text(R"re(<t[^>]*>(.*)</t>)re");
  static const std::regex k_value(R"re(<v>(.*)</v>)re");
  for (auto it = std::sregex_iterator(xml.begin(), xml.end(), k_cell); it != std::sregex_iterator(); ++it) {
    const std::smatch& m = *it;
    size_t column = 0;
    for (const char letter : m[1].str()) column = column * 26 + static_cast<size_t>(letter - 'A' + 1);
    const size_t row = std::stoul(m[2].str());
    if (sheet.size() < row) sheet.resize(row);
    auto& cells = sheet[row - 1];
    if (cells.size() < column) cells.resize(column);
    SheetCell& cell = cells[column - 1];
    const std::string body = m[4].str();
    std::smatch part;
    if (m[3].str().find("inlineStr") != std::string::npos && std::regex_search(body, part, k_text)) {
      cell.kind = SheetCell::Text;
      cell.text = part[1].str();  // the tests' texts hold no character XML escapes
    } else if (std::regex_search(body, part, k_value)) {
      cell.kind = SheetCell::Number;
      cell.value = std::strtod(part[1].str().c_str(), nullptr);
    }
  }
  return sheet;
}

}  // namespace morvane::testing
