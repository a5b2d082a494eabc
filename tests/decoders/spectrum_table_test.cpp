// SPDX-License-Identifier: MIT
#include "decoders/spectrum_table.h"

#include <gtest/gtest.h>

#include "decoder_fixture.h"

namespace morvane {
namespace {

using testing::gc_packet;
using testing::isotope_packet;
using testing::LoadedFile;

TEST(SpectrumTable, BinWordsDecodeMantissaAndExponent) {
  const std::pair<int32_t, double> cases[] = {
      {0x000F, 0}, {0x0011, 2}, {0x0FF0, 255}, {0xFFF0, 4095}, {0xFFFF, 4095.0 * 32768}};
  for (const auto& [word, count] : cases) EXPECT_EQ(decode_bin(word), count) << word;
}

TEST(SpectrumTable, CompleteSpectraComeFirstThenGcSpectra) {
  testing::Packet auxiliary = isotope_packet({});
  auxiliary.words[16] = 1;
  LoadedFile file(testing::one_a_frame({
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
  }));
  const Spectrum_Table table = build_spectrum_table(file.session.catalogue);
  EXPECT_EQ(table.complete_count, 3);
  EXPECT_EQ(table.gc_count, 2);
  EXPECT_EQ(table.column(1), (SpectrumColumn{1, 2, 4}));
  EXPECT_EQ(table.column(2), (SpectrumColumn{6}));
  EXPECT_EQ(table.column(3), (SpectrumColumn{7, 8}));
  EXPECT_EQ(table.column(4), (SpectrumColumn{5}));
  EXPECT_EQ(table.column(5), (SpectrumColumn{9}));
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

// Assembles spectrum `column` of the session's table into spectrum.
void assemble(const Session& session, int32_t column, SubPackets which, AssembledSpectrum& spectrum) {
  const Spectrum_Table table = build_spectrum_table(session.catalogue);
  assemble_spectrum(session.telemetry(), session.catalogue.Science_List, table.column(column), session.Byte_Reverse,
                    which, spectrum);
}

TEST(SpectrumTable, TheTenthSubPacketFeedsOnlyTheExport) {
  LoadedFile file(testing::one_a_frame(spectrum_of(10, 3)));
  EXPECT_EQ(build_spectrum_table(file.session.catalogue).sub_packet_count(1), 10);
  AssembledSpectrum view, all;
  assemble(file.session, 1, SubPackets::AllButTenth, view);
  EXPECT_EQ(view.bin_count, 27);
  EXPECT_EQ(view.bins[0], 100);
  EXPECT_EQ(view.bins[26], 902);
  EXPECT_EQ(view.bins[27], 0);
  assemble(file.session, 1, SubPackets::All, all);
  EXPECT_EQ(all.bin_count, 30);
  EXPECT_EQ(all.bins[29], 1002);
}

TEST(SpectrumTable, BinsBeyond1024StopTheAssemblyAfterTheBinsBefore) {
  LoadedFile file(testing::one_a_frame({isotope_packet({2, 1023, {0x10, 0x20, 0x30}})}));
  AssembledSpectrum spectrum;
  EXPECT_NE(testing::thrown([&] { assemble(file.session, 1, SubPackets::All, spectrum); }).number, 0);
  EXPECT_EQ(spectrum.bin_count, 2);
  EXPECT_EQ(spectrum.bins[1023], 1);
  EXPECT_EQ(spectrum.bins[1024], 2);
}

TEST(SpectrumTable, ByteOrderAndZebRecordsGiveTheSameBins) {
  LoadedFile binary(testing::one_a_frame({isotope_packet({3, 4, {0x0013, 0x0021}})}, 280, false), FileFormat::GRM,
                     false);
  // Items 9.. are the packet's words: 23 the first bin (byte 28), 24 the count, 25.. the bins.
  LoadedFile zeb(testing::zeb_text(
      {testing::zeb_record(LabelCode::IsotopeSpectrum, {{6, 3}, {23, 4}, {24, 2}, {25, 0x0013}, {26, -65503}})}));
  for (const Session* session : {&binary.session, &zeb.session}) {
    ASSERT_EQ(build_spectrum_table(session->catalogue).complete_count, 1);
    AssembledSpectrum spectrum;
    assemble(*session, 1, SubPackets::All, spectrum);
    EXPECT_EQ(spectrum.bin_count, 2);
    EXPECT_EQ(spectrum.bins[4], 8);
    EXPECT_EQ(spectrum.bins[5], 4);  // 0x0021 (written -65503 in the ZEB file)
  }
}

}  // namespace
}  // namespace morvane
