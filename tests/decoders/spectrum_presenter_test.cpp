// SPDX-License-Identifier: MIT
// The spectrum window: a file's spectra, the one on view, its graph and the axis the buttons move.
#include "decoders/spectrum_presenter.h"

#include <vector>

#include "decoder_fixture.h"
#include "decoders/spectrum_axis.h"
#include "decoders/spectrum_graph.h"
#include "decoders/spectrum_table.h"

namespace morvane::testing {
namespace {

// Spectrum 1: sub-packets with bins 0..2 (counts 1000, 1500, 500) and 3; spectrum 2: bin 0
// only; then a GC spectrum with its own header.
class SpectrumView : public ::testing::Test {
 protected:
  void SetUp() override { view.open(file.session); }
  LoadedFile file{testing::one_a_frame({
      isotope_packet({2, 0, {1000 << 4, 1500 << 4, 500 << 4}, 0x8000, {11, 12, 13, 14}}),
      isotope_packet({0, 3, {7 << 4}, 0x4000, {21, 22, 23, 24}}),
      isotope_packet({3, 0, {9 << 4}}),
      gc_packet({0, 40, {1 << 4}, 0xC000, {31, 32, 33, 34}}),
  })};
  SpectrumPresenter view;
};

TEST_F(SpectrumView, OpensOnSpectrumOneOverTheWholeRange) {
  EXPECT_EQ(std::tuple(view.complete_count_text(), view.gc_count_text(), view.scroll_maximum()), std::tuple("2", "1", 3));
  EXPECT_EQ(std::tuple(view.title(), view.sub_packet_text(), view.is_complete()),
            std::tuple("Complete spectrum number 1", "Sub-packet 1 viewed of 2", true));
  EXPECT_EQ(std::tuple(view.bin_count(), view.bins()[1], view.bins()[3]), std::tuple(4, 1500, 7));
  EXPECT_EQ(view.axis().Y_Max, 2);  // the smallest scale that holds 1500 counts
}

TEST_F(SpectrumView, AGcSpectrumKeepsTheBinsOfTheLastCompleteOne) {
  view.show_sub_packet(file.session, 2);
  view.show_spectrum(file.session, 3);
  EXPECT_EQ(std::tuple(view.title(), view.is_complete(), view.sub_packet_shown(), view.sub_packet_text()),
            std::tuple("GC spectrum number 1", false, false, ""));
  EXPECT_EQ(std::tuple(view.bin_count(), view.bins()[1]), std::tuple(4, 1500));
  // The GC packet's own header.
  EXPECT_EQ(std::tuple(view.header()->first_bin, view.science_index(), view.header()->bit14().text),
            std::tuple(40, 4, "YES"));

  // Back on a complete spectrum the first sub-packet is on view again; its single bin leaves
  // the others of spectrum 1 in place.
  view.show_spectrum(file.session, 2);
  EXPECT_EQ(view.sub_packet_text(), "Sub-packet 1 viewed of 1");
  EXPECT_EQ(std::tuple(view.bin_count(), view.bins()[0], view.bins()[1]), std::tuple(1, 9, 1500));
}


TEST(SpectrumGraph, TheWholeRangeDrawsEveryBinAsAStep) {
  Spectrum_Bins bins{};
  for (size_t b = 0; b < bins.size(); ++b) bins[b] = static_cast<double>(b);
  const SpectrumAxis axis;  // 0..1024, Y_Max 1: 1000 counts
  const SpectrumGraph graph = spectrum_graph(bins, 1025, axis);
  EXPECT_EQ(std::tuple(graph.width, graph.x_title, graph.outline_colour), std::tuple(1025, "Bin number", kRed));
  ASSERT_EQ(graph.outline.size(), 2050u);
  // 1024 counts stay at the top.
  const auto& line = graph.outline;
  EXPECT_EQ((std::vector{line[0], line[1], line[1000], line[1001], line[2049]}),
            (std::vector<GraphPoint>{{0, 0}, {1, 0}, {500, 0.5}, {501, 0.5}, {1025, 1}}));
  EXPECT_EQ(tick_labels(graph.x_ticks),
            (std::vector<std::string>{"0", "128", "256", "384", "512", "640", "768", "896", "1024"}));
  EXPECT_EQ(tick_labels(graph.y_ticks), (std::vector<std::string>{"0", "200", "400", "600", "800", "1000"}));
  EXPECT_EQ(std::tuple(graph.x_ticks[8].at, graph.y_ticks[5].at), std::tuple(1024, 1));
}

using B = SpectrumButton;

TEST(SpectrumAxis, PanningStepsAnEighthOfTheRangeAndStopsAtTheEnds) {
  SpectrumAxis axis;
  axis.X_Start = 10;  // left: from the start, not below 0 (not -118)
  axis.press(B::PanLeft);
  EXPECT_EQ(std::tuple(axis.X_Start, axis.X_End), std::tuple(0, 1024));

  axis = SpectrumAxis{};
  axis.press(B::ZoomIn);
  axis.press(B::ZoomIn);  // 0..256, zoom 4: steps of 32
  axis.press(B::PanRight);
  EXPECT_EQ(std::tuple(axis.X_Start, axis.X_End), std::tuple(32, 288));
  // Right: from the end, not above 1024.
  axis.X_End = 1010;
  axis.X_Start = 754;
  axis.press(B::PanRight);
  EXPECT_EQ(std::tuple(axis.X_Start, axis.X_End), std::tuple(768, 1024));
  EXPECT_TRUE(!axis.enabled(B::PanRight) && axis.enabled(B::PanLeft));
}

TEST(SpectrumAxis, FittingScaleHoldsTheHighestCount) {
  const std::pair<double, double> cases[] = {{0, 0.01}, {10, 0.01}, {10.5, 0.02}, {1500, 2}, {4095.0 * 32768, 100}};
  for (const auto& [count, scale] : cases) EXPECT_EQ(fitting_scale(count), scale) << count;
}

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
  EXPECT_EQ(std::tuple(table.complete_count, table.gc_count), std::tuple(3, 2));
  const SpectrumColumn columns[] = {{1, 2, 4}, {6}, {7, 8}, {5}, {9}};
  for (int32_t c = 1; c <= 5; ++c) EXPECT_EQ(table.column(c), columns[c - 1]) << c;
  EXPECT_EQ(std::tuple(table.sub_packet_count(1), table.is_complete(3), table.is_complete(4)),
            std::tuple(3, true, false));



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
  EXPECT_EQ(std::tuple(view.bin_count, view.bins[0], view.bins[26], view.bins[27]), std::tuple(27, 100, 902, 0));
  assemble(file.session, 1, SubPackets::All, all);
  EXPECT_EQ(std::tuple(all.bin_count, all.bins[29]), std::tuple(30, 1002));
}

TEST(SpectrumTable, BinsBeyond1024StopTheAssemblyAfterTheBinsBefore) {
  LoadedFile file(testing::one_a_frame({isotope_packet({2, 1023, {0x10, 0x20, 0x30}})}));
  AssembledSpectrum spectrum;
  EXPECT_NE(testing::thrown([&] { assemble(file.session, 1, SubPackets::All, spectrum); }).number, 0);
  EXPECT_EQ(std::tuple(spectrum.bin_count, spectrum.bins[1023], spectrum.bins[1024]), std::tuple(2, 1, 2));
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
    // Bin 5 is 0x0021, written -65503 in the ZEB file.
    EXPECT_EQ(std::tuple(spectrum.bin_count, spectrum.bins[4], spectrum.bins[5]), std::tuple(2, 8, 4));
  }
}

}  // namespace
}  // namespace morvane::testing
