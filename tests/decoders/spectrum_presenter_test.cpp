// SPDX-License-Identifier: MIT
#include "decoders/spectrum_presenter.h"

#include <gtest/gtest.h>

#include "decoder_fixture.h"

namespace morvane {
namespace {

using testing::gc_packet;
using testing::isotope_packet;
using testing::LoadedFile;

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
  EXPECT_EQ(view.complete_count_text(), "2");
  EXPECT_EQ(view.gc_count_text(), "1");
  EXPECT_EQ(view.scroll_maximum(), 3);
  EXPECT_EQ(view.title(), "Complete spectrum number 1");
  EXPECT_TRUE(view.is_complete());
  EXPECT_EQ(view.sub_packet_text(), "Sub-packet 1 viewed of 2");
  EXPECT_EQ(view.bin_count(), 4);
  EXPECT_EQ(view.bins()[1], 1500);
  EXPECT_EQ(view.bins()[3], 7);
  EXPECT_EQ(view.axis().Y_Max, 2);  // the smallest scale that holds 1500 counts
}

TEST_F(SpectrumView, AGcSpectrumKeepsTheBinsOfTheLastCompleteOne) {
  view.show_sub_packet(file.session, 2);
  view.show_spectrum(file.session, 3);
  EXPECT_EQ(view.title(), "GC spectrum number 1");
  EXPECT_FALSE(view.is_complete());
  EXPECT_FALSE(view.sub_packet_shown());
  EXPECT_EQ(view.sub_packet_text(), "");
  EXPECT_EQ(view.bin_count(), 4);
  EXPECT_EQ(view.bins()[1], 1500);
  EXPECT_EQ(view.header()->first_bin, 40);  // the GC packet's own header
  EXPECT_EQ(view.science_index(), 4);
  EXPECT_EQ(view.header()->bit14().text, "YES");

  // Back on a complete spectrum the first sub-packet is on view again; its single bin leaves
  // the others of spectrum 1 in place.
  view.show_spectrum(file.session, 2);
  EXPECT_EQ(view.sub_packet_text(), "Sub-packet 1 viewed of 1");
  EXPECT_EQ(view.bin_count(), 1);
  EXPECT_EQ(view.bins()[0], 9);
  EXPECT_EQ(view.bins()[1], 1500);
}

}  // namespace
}  // namespace morvane
