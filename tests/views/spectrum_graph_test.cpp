// SPDX-License-Identifier: MIT
#include "views/spectrum_graph.h"

#include <gtest/gtest.h>

namespace morvane {
namespace {

std::vector<std::string> labels(const std::vector<Graph_Tick>& ticks) {
  std::vector<std::string> out;
  for (const auto& t : ticks) out.push_back(t.label);
  return out;
}

TEST(SpectrumGraph, TheWholeRangeDrawsEveryBinAsAStep) {
  Spectrum_Bins bins{};
  for (size_t b = 0; b < bins.size(); ++b) bins[b] = static_cast<double>(b);
  const Spectrum_Axis axis;  // 0..1024, Y_Max 1: 1000 counts
  const Spectrum_Graph graph = spectrum_graph(bins, 1025, axis);
  EXPECT_EQ(graph.width, 1025);
  EXPECT_EQ(graph.x_title, "Bin number");
  EXPECT_EQ(graph.outline_colour, kRed);
  ASSERT_EQ(graph.outline.size(), 2050u);
  EXPECT_EQ(graph.outline[0], (Graph_Point{0, 0}));
  EXPECT_EQ(graph.outline[1], (Graph_Point{1, 0}));
  EXPECT_EQ(graph.outline[1000], (Graph_Point{500, 0.5}));
  EXPECT_EQ(graph.outline[1001], (Graph_Point{501, 0.5}));
  EXPECT_EQ(graph.outline[2049], (Graph_Point{1025, 1}));  // 1024 counts stay at the top
  EXPECT_EQ(labels(graph.x_ticks),
            (std::vector<std::string>{"0", "128", "256", "384", "512", "640", "768", "896", "1024"}));
  EXPECT_EQ(graph.x_ticks[8].at, 1024);
  EXPECT_EQ(labels(graph.y_ticks), (std::vector<std::string>{"0", "200", "400", "600", "800", "1000"}));
  EXPECT_EQ(graph.y_ticks[5].at, 1);
}

TEST(SpectrumGraph, AZoomedRangeSpreadsItsBinsAcrossTheSameWidth) {
  Spectrum_Bins bins{};
  bins[64] = 10;
  bins[65] = 20;
  Spectrum_Axis axis;
  axis.X_Zoom = 4;
  axis.X_Start = 64;
  axis.X_End = 320;
  axis.Y_Max = 0.04;  // 40 counts
  const Spectrum_Graph graph = spectrum_graph(bins, 100, axis);
  EXPECT_EQ(graph.width, 257 * 4);
  ASSERT_EQ(graph.outline.size(), 2u * (100 - 64));  // bins 64..99: the rest were not read
  EXPECT_EQ(graph.outline[0], (Graph_Point{0, 0.25}));
  EXPECT_EQ(graph.outline[1], (Graph_Point{4, 0.25}));
  EXPECT_EQ(graph.outline[2], (Graph_Point{4, 0.5}));
  EXPECT_EQ(labels(graph.x_ticks),
            (std::vector<std::string>{"64", "96", "128", "160", "192", "224", "256", "288", "320"}));
  EXPECT_EQ(graph.x_ticks[1].at, 128);
  EXPECT_EQ(labels(graph.y_ticks), (std::vector<std::string>{"0", "8", "16", "24", "32", "40"}));
}

TEST(SpectrumGraph, NothingReadOrNothingInRangeDrawsNoOutline) {
  Spectrum_Bins bins{};
  EXPECT_TRUE(spectrum_graph(bins, 0, Spectrum_Axis{}).outline.empty());
  Spectrum_Axis axis;
  axis.X_Zoom = 2;
  axis.X_Start = 512;
  axis.X_End = 1024;
  EXPECT_TRUE(spectrum_graph(bins, 300, axis).outline.empty());
}

}  // namespace
}  // namespace morvane
