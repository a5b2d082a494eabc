// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace morvane {

// What a decoder hands a view to draw. Coordinates are twips of the drawing surface, origin top
// left, y downwards (1440 twips an inch); the view maps them to pixels.
struct Colour {
  uint8_t red = 0, green = 0, blue = 0;
  bool operator==(const Colour&) const = default;
};
inline constexpr Colour kBlack{0, 0, 0};
inline constexpr Colour kRed{255, 0, 0};
inline constexpr Colour kBlue{0, 0, 255};

// How a text is placed. Only the view knows how wide a text is in its font, so a decoder says
// where a text starts, where it ends, or that it continues where the text before it ended.
enum class Anchor : uint8_t {
  Left,    // the text starts at x
  Right,   // the text ends at x (right-aligned on x)
  Follow,  // the text starts where the previous text ended; x is ignored, y is used
};

struct PlacedText {
  std::string text;
  int x = 0;
  int y = 0;
  Colour colour = kBlack;
  Anchor anchor = Anchor::Left;
  bool operator==(const PlacedText&) const = default;
};

using Drawing = std::vector<PlacedText>;

}  // namespace morvane
