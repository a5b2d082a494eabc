// SPDX-License-Identifier: MIT
#include "export/spectra_export.h"

#include "export_fixture.h"

namespace morvane {
namespace {

using testing::gc_packet;
using testing::isotope_packet;
using testing::SubPacket;

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
    std::vector<testing::Packet> packets;
    // Spectrum 1: bins 0..2 with 1, 8 and 0 counts.
    packets.push_back(isotope_packet({2, 0, {0x10, 0x13, 0x0F}}));
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

TEST_F(SpectraExportTest, RawRowsStopAtTheNumberOfBinsRead) {
  const auto lines = exported(SpectraFormat::Raw, {1, 4});
  ASSERT_EQ(lines.size(), 5u + 1025u);
  EXPECT_EQ(lines[0], "Spectra acquired from " + session.File_Name);
  EXPECT_EQ(lines[1], "Spectra in raw data format");
  EXPECT_EQ(lines[2], "");
  EXPECT_EQ(lines[3], "Bin No.\tSpec. 1\tSpec. 2\tSpec. 3\tSpec. 4");
  EXPECT_EQ(lines[4], "");
  auto row = [&](int r) { return lines[5 + static_cast<size_t>(r)]; };
  // Spectrum 1 read 3 bins: row 3 still shows; the GC column stays empty.
  EXPECT_EQ(row(0), "0\t1\t1\t0\t");
  EXPECT_EQ(row(1), "1\t8\t1\t0\t");
  EXPECT_EQ(row(3), "3\t0\t2\t0\t");
  EXPECT_EQ(row(4), "4\t\t3\t0\t");
  // The tenth sub-packet of spectrum 2 is read: bins 18 and 19 hold 10, and 20 bins were read.
  EXPECT_EQ(row(19), "19\t\t10\t0\t");
  EXPECT_EQ(row(20), "20\t\t0\t0\t");
  EXPECT_EQ(row(21), "21\t\t\t0\t");
  // Spectrum 3 read 300 bins from bin 35: rows 301 on are empty, though bins up to 334 are filled.
  EXPECT_EQ(row(35), "35\t\t\t5\t");
  EXPECT_EQ(row(300), "300\t\t\t5\t");
  EXPECT_EQ(row(301), "301\t\t\t\t");
  EXPECT_EQ(row(1024), "1024\t\t\t\t");
}

TEST_F(SpectraExportTest, ExcelGraphRowsHoldTheBinsReceived) {
  const auto lines = exported(SpectraFormat::Excel_Graphs, {1, 4}, ';');
  ASSERT_EQ(lines.size(), 5u + 1025u);
  EXPECT_EQ(lines[1], "Spectra in format suitable for excel graphs");
  EXPECT_EQ(lines[3], "Bin No.;Spec. 1;Spec. 2;Spec. 3;Spec. 4");
  auto row = [&](int r) { return lines[5 + static_cast<size_t>(r)]; };
  EXPECT_EQ(row(0), "0;1;1;;");
  EXPECT_EQ(row(2), "2;0;2;;");
  EXPECT_EQ(row(3), "3;;2;;");
  EXPECT_EQ(row(19), "19;;10;;");
  EXPECT_EQ(row(20), "20;;;;");
  EXPECT_EQ(row(34), "34;;;;");
  EXPECT_EQ(row(35), "35;;;5;");
  EXPECT_EQ(row(334), "334;;;5;");
  EXPECT_EQ(row(335), "335;;;;");
}

}  // namespace
}  // namespace morvane
