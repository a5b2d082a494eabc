// SPDX-License-Identifier: MIT
#pragma once

#include <QPoint>
#include <QWidget>
#include <QtMath>

namespace morvane {

// Drawing surfaces and window positions are given in twips: 1440 to the inch.
inline constexpr int kTwipsPerInch = 1440;

inline int twips_to_pixels(int twips, int dots_per_inch) {
  return qRound(static_cast<double>(twips) * dots_per_inch / kTwipsPerInch);
}

inline int pixels_to_twips(int pixels, int dots_per_inch) {
  return qRound(static_cast<double>(pixels) * kTwipsPerInch / dots_per_inch);
}

// A point in twips as pixels of the widget's screen.
inline QPoint twips_to_pixels(int x, int y, const QWidget& widget) {
  return {twips_to_pixels(x, widget.logicalDpiX()), twips_to_pixels(y, widget.logicalDpiY())};
}

}  // namespace morvane
