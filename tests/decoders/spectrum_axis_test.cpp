// SPDX-License-Identifier: MIT
#include "decoders/spectrum_axis.h"

#include <gtest/gtest.h>

#include <vector>

namespace morvane {
namespace {

using B = SpectrumButton;

TEST(SpectrumAxis, PanningStepsAnEighthOfTheRangeAndStopsAtTheEnds) {
  SpectrumAxis axis;
  axis.X_Start = 10;  // left: from the start, not below 0 (not -118)
  axis.press(B::PanLeft);
  EXPECT_EQ(axis.X_Start, 0);
  EXPECT_EQ(axis.X_End, 1024);

  axis = SpectrumAxis{};
  axis.press(B::ZoomIn);
  axis.press(B::ZoomIn);  // 0..256, zoom 4: steps of 32
  axis.press(B::PanRight);
  EXPECT_EQ(axis.X_Start, 32);
  EXPECT_EQ(axis.X_End, 288);
  // Right: from the end, not above 1024.
  axis.X_End = 1010;
  axis.X_Start = 754;
  axis.press(B::PanRight);
  EXPECT_EQ(axis.X_End, 1024);
  EXPECT_EQ(axis.X_Start, 768);
  EXPECT_FALSE(axis.enabled(B::PanRight));
  EXPECT_TRUE(axis.enabled(B::PanLeft));
}

TEST(SpectrumAxis, FittingScaleHoldsTheHighestCount) {
  EXPECT_EQ(fitting_scale(0), 0.01);
  EXPECT_EQ(fitting_scale(10), 0.01);
  EXPECT_EQ(fitting_scale(10.5), 0.02);
  EXPECT_EQ(fitting_scale(1500), 2);
  EXPECT_EQ(fitting_scale(4095.0 * 32768), 100);
}

}  // namespace
}  // namespace morvane
