// SPDX-License-Identifier: MIT
#include "decoders/drawing_text.h"

#include <gtest/gtest.h>

namespace morvane {
namespace {

TEST(DrawingText, TextsGoToTheirNearestCells) {
  const Drawing drawing = {
      {"Name", 100, 200, kBlue, Anchor::Left},  {"42", 1000, 200, kBlue, Anchor::Right},
      {" +/- ", 0, 200, kBlue, Anchor::Follow}, {"o", 0, 160, kBlue, Anchor::Follow},
      {"C", 0, 200, kBlue, Anchor::Follow},     {"Heading", 0, 0, kBlue, Anchor::Left},
  };
  EXPECT_EQ(drawing_as_text(drawing, 100, 200), "Heading\n Name   42 +/- oC\n");
}

}  // namespace
}  // namespace morvane
