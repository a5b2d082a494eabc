// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

#include "decoders/spectrum_table.h"

namespace morvane {

// The six buttons under the spectrum graph, Command1..Command6 in this order.
enum class SpectrumButton { ZoomOut, ZoomIn, ScaleUp, ScaleDown, PanLeft, PanRight };
inline constexpr SpectrumButton kSpectrumButtons[] = {SpectrumButton::ZoomOut, SpectrumButton::ZoomIn,
                                                       SpectrumButton::ScaleUp, SpectrumButton::ScaleDown,
                                                       SpectrumButton::PanLeft, SpectrumButton::PanRight};

// The Y-axis scale steps: the axis tops at Y_Max x 1000 counts.
inline constexpr double kYScaleSteps[] = {0.01, 0.02, 0.04, 0.1, 0.2, 0.4, 1, 2, 4, 10, 20, 40, 100};

// The visible part of the spectrum graph: bins X_Start..X_End, 1024 / X_Zoom bins across, and
// the Y-axis maximum. Starts on the whole range, bins 0..1024.
struct SpectrumAxis {
  int16_t X_Start = 0;
  int32_t X_End = kLastBin;
  double X_Zoom = 1;  // 1, 2, 4, 8, 16, 32
  double Y_Max = 1;   // one of kYScaleSteps

  // Whether a button can be pressed: zoom out above zoom 1, zoom in below 31, scale up below
  // 100, scale down above 0.01, pan left from bin 1 on, pan right short of bin 1024.
  bool enabled(SpectrumButton button) const;
  // Applies a button; a disabled button changes nothing. Returns whether it was enabled.
  bool press(SpectrumButton button);

  // Label20 .. Label23: the range X_End - X_Start, Y_Max x 1000, X_Start and X_End.
  std::string range_text() const;
  std::string scale_text() const;
  std::string start_text() const;
  std::string end_text() const;
};

// The smallest scale step whose axis holds counts (Y_Max x 1000 >= counts); 100 when none does.
double fitting_scale(double counts);

}  // namespace morvane
