// SPDX-License-Identifier: MIT
#include "views/spectrum_table.h"

#include <gtest/gtest.h>

#include "core/error.h"
#include "packet_files.h"

namespace morvane {
namespace {

using testing::FrameWriter;
using testing::gc_packet;
using testing::isotope_packet;
using testing::Loaded_File;
using testing::Sub_Packet;

// One science packet a frame.
FrameWriter frames(const std::vector<testing::Packet>& packets) {
  FrameWriter writer(282);
  for (const auto& packet : packets) writer.add_frame({packet});
  return writer;
}

TEST(SpectrumTable, BinWordsDecodeMantissaAndExponent) {
  const std::pair<int32_t, double> cases[] = {{0x0010, 1},   {0x0011, 2},    {0x000F, 0},
                                              {0x0013, 8},   {0x0000, 0},    {0x0100, 16},
                                              {0x0FF0, 255}, {0xFFF0, 4095}, {0xFFFF, 4095.0 * 32768}};
  for (const auto& [word, count] : cases) EXPECT_EQ(decode_bin(word), count) << word;
}

TEST(SpectrumTable, CompleteSpectraComeFirstThenGcSpectra) {
  testing::Packet auxiliary = isotope_packet({});
  auxiliary.words[16] = 1;
  auto writer = frames({
      isotope_packet({2, 0, {0x10}}),  // 1: starts spectrum 1
      isotope_packet({0, 1, {0x10}}),  // 2
      auxiliary,                       // 3: skipped
      isotope_packet({1, 2, {0x10}}),  // 4: ends spectrum 1
      gc_packet({0, 0, {0x20}}),       // 5: GC spectrum 1
      isotope_packet({3, 0, {0x30}}),  // 6: spectrum 2, whole in one packet
      isotope_packet({2, 0, {0x40}}),  // 7: spectrum 3
      isotope_packet({0, 1, {0x40}}),  // 8
      gc_packet({0, 0, {0x50}}),       // 9: GC spectrum 2, ends spectrum 3
      isotope_packet({0, 5, {0x50}}),  // 10: belongs to no spectrum
  });
  Loaded_File file(writer);
  const Spectrum_Table table = build_spectrum_table(file.session.catalogue);
  EXPECT_EQ(table.complete_count, 3);
  EXPECT_EQ(table.gc_count, 2);
  EXPECT_EQ(table.column(1), (Spectrum_Column{1, 2, 4}));
  EXPECT_EQ(table.column(2), (Spectrum_Column{6}));
  EXPECT_EQ(table.column(3), (Spectrum_Column{7, 8}));
  EXPECT_EQ(table.column(4), (Spectrum_Column{5}));
  EXPECT_EQ(table.column(5), (Spectrum_Column{9}));
  EXPECT_EQ(table.sub_packet_count(1), 3);
  EXPECT_TRUE(table.is_complete(3));
  EXPECT_FALSE(table.is_complete(4));
  EXPECT_THROW(table.column(6), RuntimeError);
}

std::vector<testing::Packet> spectrum_of(int sub_packets, int bins_each) {
  std::vector<testing::Packet> packets;
  for (int k = 1; k <= sub_packets; ++k) {
    std::vector<int32_t> bins;
    for (int j = 0; j < bins_each; ++j) bins.push_back(((k * 100 + j) << 4));  // count k x 100 + j
    packets.push_back(isotope_packet({k == 1 ? 2 : 0, (k - 1) * bins_each, bins}));
  }
  return packets;
}

TEST(SpectrumTable, TheTenthSubPacketFeedsOnlyTheExport) {
  auto writer = frames(spectrum_of(10, 3));
  Loaded_File file(writer);
  const Spectrum_Table table = build_spectrum_table(file.session.catalogue);
  EXPECT_EQ(table.sub_packet_count(1), 10);
  const EntryList& science = file.session.catalogue.Science_List;
  const TelemetryFile& telemetry = file.session.telemetry();

  Assembled_Spectrum view;
  assemble_spectrum(telemetry, science, table.column(1), true, Sub_Packets::AllButTenth, view);
  EXPECT_EQ(view.bin_count, 27);
  EXPECT_EQ(view.bins[0], 100);
  EXPECT_EQ(view.bins[26], 902);
  EXPECT_EQ(view.bins[27], 0);

  Assembled_Spectrum all;
  assemble_spectrum(telemetry, science, table.column(1), true, Sub_Packets::All, all);
  EXPECT_EQ(all.bin_count, 30);
  EXPECT_EQ(all.bins[29], 1002);
}

TEST(SpectrumTable, MoreThanTenSubPacketsIsAnError) {
  auto writer = frames(spectrum_of(11, 1));
  Loaded_File file(writer);
  try {
    build_spectrum_table(file.session.catalogue);
    FAIL() << "no error";
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.number(), 9);
  }
}

TEST(SpectrumTable, BinsBeyond1024StopTheAssemblyAfterTheBinsBefore) {
  auto writer = frames({isotope_packet({2, 1023, {0x10, 0x20, 0x30}})});
  Loaded_File file(writer);
  const Spectrum_Table table = build_spectrum_table(file.session.catalogue);
  Assembled_Spectrum spectrum;
  EXPECT_THROW(assemble_spectrum(file.session.telemetry(), file.session.catalogue.Science_List, table.column(1), true,
                                 Sub_Packets::All, spectrum),
               RuntimeError);
  EXPECT_EQ(spectrum.bin_count, 2);
  EXPECT_EQ(spectrum.bins[1023], 1);
  EXPECT_EQ(spectrum.bins[1024], 2);
}

TEST(SpectrumTable, BinsNoSubPacketWritesKeepTheirCounts) {
  auto writer = frames({isotope_packet({2, 0, {0x10, 0x10, 0x10, 0x10}}), isotope_packet({2, 1, {0x20}})});
  Loaded_File file(writer);
  const Spectrum_Table table = build_spectrum_table(file.session.catalogue);
  Assembled_Spectrum spectrum;
  const auto& science = file.session.catalogue.Science_List;
  assemble_spectrum(file.session.telemetry(), science, table.column(1), true, Sub_Packets::All, spectrum);
  assemble_spectrum(file.session.telemetry(), science, table.column(2), true, Sub_Packets::All, spectrum);
  EXPECT_EQ(spectrum.bin_count, 1);
  EXPECT_EQ(spectrum.bins[0], 1);
  EXPECT_EQ(spectrum.bins[1], 2);
  EXPECT_EQ(spectrum.bins[3], 1);
}

TEST(SpectrumTable, ByteOrderAndZebRecordsGiveTheSameBins) {
  auto writer = FrameWriter(280, false);
  writer.add_frame({isotope_packet({3, 4, {0x0013, 0x0021}})});
  Loaded_File binary(writer, FileFormat::GRM, false);
  std::vector<std::vector<int32_t>> records;
  // Items 9.. are the packet's words: 23 the first bin (byte 28), 24 the count, 25.. the bins.
  records.push_back(testing::zeb_record({{5, 1852}, {6, 3}, {17, 3}, {23, 4}, {24, 2}, {25, 0x0013}, {26, -65503}}));
  Loaded_File zeb(testing::zeb_text(records));
  for (const Session* session : {&binary.session, &zeb.session}) {
    const Spectrum_Table table = build_spectrum_table(session->catalogue);
    ASSERT_EQ(table.complete_count, 1);
    Assembled_Spectrum spectrum;
    assemble_spectrum(session->telemetry(), session->catalogue.Science_List, table.column(1), session->Byte_Reverse,
                      Sub_Packets::All, spectrum);
    EXPECT_EQ(spectrum.bin_count, 2);
    EXPECT_EQ(spectrum.bins[4], 8);
    EXPECT_EQ(spectrum.bins[5], 4);  // 0x0021 (written -65503 in the ZEB file)
  }
}

}  // namespace
}  // namespace morvane
