// SPDX-License-Identifier: MIT
#include "decoders/spectrum_graph.h"

#include <gtest/gtest.h>

namespace morvane {
namespace {

std::vector<std::string> labels(const std::vector<GraphTick>& ticks) {
  std::vector<std::string> out;
  for (const auto& t : ticks) out.push_back(t.label);
  return out;
}

TEST(SpectrumGraph, TheWholeRangeDrawsEveryBinAsAStep) {
  Spectrum_Bins bins{};
  for (size_t b = 0; b < bins.size(); ++b) bins[b] = static_cast<double>(b);
  const SpectrumAxis axis;  // 0..1024, Y_Max 1: 1000 counts
  const SpectrumGraph graph = spectrum_graph(bins, 1025, axis);
  EXPECT_EQ(graph.width, 1025);
  EXPECT_EQ(graph.x_title, "Bin number");
  EXPECT_EQ(graph.outline_colour, kRed);
  ASSERT_EQ(graph.outline.size(), 2050u);
  EXPECT_EQ(graph.outline[0], (GraphPoint{0, 0}));
  EXPECT_EQ(graph.outline[1], (GraphPoint{1, 0}));
  EXPECT_EQ(graph.outline[1000], (GraphPoint{500, 0.5}));
  EXPECT_EQ(graph.outline[1001], (GraphPoint{501, 0.5}));
  EXPECT_EQ(graph.outline[2049], (GraphPoint{1025, 1}));  // 1024 counts stay at the top
  EXPECT_EQ(labels(graph.x_ticks),
            (std::vector<std::string>{"0", "128", "256", "384", "512", "640", "768", "896", "1024"}));
  EXPECT_EQ(graph.x_ticks[8].at, 1024);
  EXPECT_EQ(labels(graph.y_ticks), (std::vector<std::string>{"0", "200", "400", "600", "800", "1000"}));
  EXPECT_EQ(graph.y_ticks[5].at, 1);
}

}  // namespace
}  // namespace morvane
