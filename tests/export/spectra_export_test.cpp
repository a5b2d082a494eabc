// SPDX-License-Identifier: MIT
#include "export/spectra_export.h"

#include <map>

#include "export_fixture.h"

namespace morvane {
namespace {

using testing::gc_packet;
using testing::isotope_packet;

std::vector<std::string> lines_of(const std::string& text) {
  std::vector<std::string> lines;
  for (size_t start = 0, end; (end = text.find("\r\n", start)) != std::string::npos; start = end + 2) {
    lines.push_back(text.substr(start, end - start));
  }
  return lines;
}

class SpectraExportTest : public testing::ExportTest {
 protected:
  void SetUp() override {
    ExportTest::SetUp();
    // Spectrum 1: bins 0..2 with 1, 8 and 0 counts.
    std::vector<testing::Packet> packets = {isotope_packet({2, 0, {0x10, 0x13, 0x0F}})};
    // Spectrum 2: ten sub-packets of two bins, sub-packet k filling bins 2k-2 and 2k with k.
    for (int k = 1; k <= 10; ++k) {
      packets.push_back(isotope_packet({k == 1 ? 2 : 0, 2 * (k - 1), {k << 4, k << 4}}));
    }
    packets.push_back(gc_packet({0, 0, {0x10}}));  // spectrum 4, after the complete ones
    // Spectrum 3: 300 bins from bin 35, 5 counts each.
    for (int k = 0; k < 3; ++k) {
      packets.push_back(isotope_packet({k == 0 ? 2 : 0, 35 + 100 * k, std::vector(100, 0x50)}));
    }
    load(packets);
    table = build_spectrum_table(session.catalogue);
    ASSERT_EQ(table.spectrum_count(), 4);
  }
  std::vector<std::string> exported(SpectraFormat format, EntryRange range, char delimiter = '\t') {
    return lines_of(written([&](LineSink& out) { write_spectra(session, table, {range, format}, out); }, delimiter));
  }
  Spectrum_Table table;
};

// Raw rows stop at the number of bins read: spectrum 1 read 3 bins (row 3 still shows, the GC
// column stays empty); the tenth sub-packet of spectrum 2 is read (bins 18 and 19 hold 10, 20 bins
// read); spectrum 3 read 300 bins from bin 35, so rows 301 on are empty though bins up to 334 are
// filled. Excel graph rows hold the bins received.
TEST_F(SpectraExportTest, RawRowsStopAtTheNumberOfBinsReadAndExcelGraphRowsHoldTheBinsReceived) {
  const auto raw = exported(SpectraFormat::Raw, {1, 4});
  ASSERT_EQ(raw.size(), 5u + 1025u);
  EXPECT_EQ(raw[0], "Spectra acquired from " + session.File_Name);
  EXPECT_EQ(raw[1], "Spectra in raw data format");
  EXPECT_EQ(raw[2], "");
  EXPECT_EQ(raw[3], "Bin No.\tSpec. 1\tSpec. 2\tSpec. 3\tSpec. 4");
  EXPECT_EQ(raw[4], "");
  const auto graphs = exported(SpectraFormat::Excel_Graphs, {1, 4}, ';');
  ASSERT_EQ(graphs.size(), 5u + 1025u);
  EXPECT_EQ(graphs[1], "Spectra in format suitable for excel graphs");
  EXPECT_EQ(graphs[3], "Bin No.;Spec. 1;Spec. 2;Spec. 3;Spec. 4");
  const std::pair<const std::vector<std::string>&, std::map<int, const char*>> rows[] = {
      {raw,
       {{0, "0\t1\t1\t0\t"}, {1, "1\t8\t1\t0\t"}, {3, "3\t0\t2\t0\t"}, {4, "4\t\t3\t0\t"},
        {19, "19\t\t10\t0\t"}, {20, "20\t\t0\t0\t"}, {21, "21\t\t\t0\t"}, {35, "35\t\t\t5\t"},
        {300, "300\t\t\t5\t"}, {301, "301\t\t\t\t"}, {1024, "1024\t\t\t\t"}}},
      {graphs,
       {{0, "0;1;1;;"}, {2, "2;0;2;;"}, {3, "3;;2;;"}, {19, "19;;10;;"}, {20, "20;;;;"}, {34, "34;;;;"},
        {35, "35;;;5;"}, {334, "334;;;5;"}, {335, "335;;;;"}}},
  };
  for (const auto& [lines, expected] : rows) {
    for (const auto& [row, text] : expected) EXPECT_EQ(lines[5 + static_cast<size_t>(row)], text) << "row " << row;
  }
}

}  // namespace
}  // namespace morvane
