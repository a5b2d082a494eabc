// SPDX-License-Identifier: MIT
#include "views/spectrum_axis.h"

#include <gtest/gtest.h>

#include <vector>

namespace morvane {
namespace {

using B = Spectrum_Button;

std::vector<bool> enabled_buttons(const Spectrum_Axis& axis) {
  std::vector<bool> out;
  for (const B button : kSpectrumButtons) out.push_back(axis.enabled(button));
  return out;
}

TEST(SpectrumAxis, TheWholeRangeCanOnlyBeZoomedIn) {
  const Spectrum_Axis axis;  // bins 0..1024, zoom 1, Y_Max 1
  EXPECT_EQ(axis.X_Start, 0);
  EXPECT_EQ(axis.X_End, 1024);
  // zoom out, zoom in, scale up, scale down, pan left, pan right
  EXPECT_EQ(enabled_buttons(axis), (std::vector<bool>{false, true, true, true, false, false}));
  EXPECT_EQ(axis.range_text(), "1024");
  EXPECT_EQ(axis.scale_text(), "1000");
  EXPECT_EQ(axis.start_text(), "0");
  EXPECT_EQ(axis.end_text(), "1024");
}

TEST(SpectrumAxis, ZoomingInHalvesTheRangeFromTheStart) {
  Spectrum_Axis axis;
  axis.X_Start = 0;
  const std::pair<double, int> steps[] = {{2, 512}, {4, 256}, {8, 128}, {16, 64}, {32, 32}};
  for (const auto& [zoom, end] : steps) {
    EXPECT_TRUE(axis.press(B::ZoomIn));
    EXPECT_EQ(axis.X_Zoom, zoom);
    EXPECT_EQ(axis.X_End, end);
  }
  EXPECT_FALSE(axis.enabled(B::ZoomIn));
  EXPECT_FALSE(axis.press(B::ZoomIn));
  EXPECT_EQ(axis.X_Zoom, 32);
  EXPECT_TRUE(axis.enabled(B::ZoomOut));
  EXPECT_TRUE(axis.enabled(B::PanRight));
  EXPECT_FALSE(axis.enabled(B::PanLeft));
}

TEST(SpectrumAxis, ZoomingOutAtTheEndMovesTheStartBack) {
  Spectrum_Axis axis;
  axis.press(B::ZoomIn);  // 0..512
  for (int i = 0; i < 4; ++i) axis.press(B::PanRight);
  EXPECT_EQ(axis.X_Start, 256);
  EXPECT_EQ(axis.X_End, 768);
  axis.press(B::ZoomOut);
  EXPECT_EQ(axis.X_Zoom, 1);
  EXPECT_EQ(axis.X_End, 1024);
  EXPECT_EQ(axis.X_Start, 0);
  // Away from the end zooming out keeps the start.
  axis = Spectrum_Axis{};
  for (int i = 0; i < 3; ++i) axis.press(B::ZoomIn);  // 0..128, zoom 8
  axis.press(B::PanRight);                            // 16..144
  axis.press(B::ZoomOut);
  EXPECT_EQ(axis.X_Start, 16);
  EXPECT_EQ(axis.X_End, 272);
}

TEST(SpectrumAxis, PanningStepsAnEighthOfTheRangeAndStopsAtTheEnds) {
  Spectrum_Axis axis;
  axis.X_Start = 10;  // left: from the start, not below 0 (not -118)
  axis.press(B::PanLeft);
  EXPECT_EQ(axis.X_Start, 0);
  EXPECT_EQ(axis.X_End, 1024);

  axis = Spectrum_Axis{};
  axis.press(B::ZoomIn);
  axis.press(B::ZoomIn);  // 0..256, zoom 4: steps of 32
  axis.press(B::PanRight);
  EXPECT_EQ(axis.X_Start, 32);
  EXPECT_EQ(axis.X_End, 288);
  axis.press(B::PanLeft);
  EXPECT_EQ(axis.X_Start, 0);
  EXPECT_EQ(axis.X_End, 256);
  // Right: from the end, not above 1024.
  axis.X_End = 1010;
  axis.X_Start = 754;
  axis.press(B::PanRight);
  EXPECT_EQ(axis.X_End, 1024);
  EXPECT_EQ(axis.X_Start, 768);
  EXPECT_FALSE(axis.enabled(B::PanRight));
  EXPECT_TRUE(axis.enabled(B::PanLeft));
}

TEST(SpectrumAxis, TheYScaleStepsOneTwoFour) {
  const std::vector<double> ladder = {0.01, 0.02, 0.04, 0.1, 0.2, 0.4, 1, 2, 4, 10, 20, 40, 100};
  Spectrum_Axis axis;
  axis.Y_Max = 0.01;
  EXPECT_FALSE(axis.enabled(B::ScaleDown));
  for (size_t i = 1; i < ladder.size(); ++i) {
    ASSERT_TRUE(axis.press(B::ScaleUp)) << ladder[i - 1];
    EXPECT_EQ(axis.Y_Max, ladder[i]);
  }
  EXPECT_FALSE(axis.enabled(B::ScaleUp));
  EXPECT_EQ(axis.scale_text(), "100000");
  for (size_t i = ladder.size() - 1; i > 0; --i) {
    ASSERT_TRUE(axis.press(B::ScaleDown)) << ladder[i];
    EXPECT_EQ(axis.Y_Max, ladder[i - 1]);
  }
  EXPECT_EQ(axis.scale_text(), "10");
  EXPECT_FALSE(axis.press(B::ScaleDown));
  EXPECT_EQ(axis.Y_Max, 0.01);
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
