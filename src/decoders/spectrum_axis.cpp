// SPDX-License-Identifier: MIT
#include "decoders/spectrum_axis.h"

#include "core/arithmetic.h"
#include "core/number_text.h"

namespace morvane {

namespace {

bool within(double value, double low, double high) { return value >= low && value <= high; }

// Scale up: 1-2-4 within a decade, then 4 becomes 10. The steps are exact doublings of 0.01,
// 0.1, 1 and 10, so comparing with the literals is exact.
double scale_up(double y) {
  if (within(y, 0.01, 0.03) || within(y, 0.1, 0.3) || within(y, 1, 3) || within(y, 10, 30)) return y * 2;
  if (y == 0.04) return 0.1;
  if (y == 0.4) return 1;
  if (y == 4) return 10;
  if (y == 40) return 100;
  return y;
}

double scale_down(double y) {
  if (within(y, 0.015, 0.09) || within(y, 0.15, 0.9) || within(y, 1.5, 9) || within(y, 15, 90)) return y / 2;
  if (y == 0.1) return 0.04;
  if (y == 1) return 0.4;
  if (y == 10) return 4;
  if (y == 100) return 40;
  return y;
}

}  // namespace

bool SpectrumAxis::enabled(SpectrumButton button) const {
  switch (button) {
    case SpectrumButton::ZoomOut: return X_Zoom > 1;
    case SpectrumButton::ZoomIn: return X_Zoom < 31;
    case SpectrumButton::ScaleUp: return Y_Max < 100;
    case SpectrumButton::ScaleDown: return Y_Max > 0.01;
    case SpectrumButton::PanLeft: return X_Start >= 1;
    case SpectrumButton::PanRight: return X_End < kLastBin;
  }
  return false;
}

bool SpectrumAxis::press(SpectrumButton button) {
  if (!enabled(button)) return false;
  const double bins_across = kLastBin / X_Zoom;
  switch (button) {
    case SpectrumButton::ZoomOut:
      X_Zoom = static_cast<double>(to_int32(X_Zoom / 2));
      X_End = to_int32(X_Start + kLastBin / X_Zoom);
      if (X_End > kLastBin) {
        X_End = kLastBin;
        X_Start = to_int16(X_End - kLastBin / X_Zoom);
      }
      break;
    case SpectrumButton::ZoomIn:
      X_Zoom = static_cast<double>(to_int32(X_Zoom * 2));
      X_End = to_int32(X_Start + kLastBin / X_Zoom);
      break;
    case SpectrumButton::ScaleUp: Y_Max = scale_up(Y_Max); break;
    case SpectrumButton::ScaleDown: Y_Max = scale_down(Y_Max); break;
    case SpectrumButton::PanLeft:
      // Panning left steps from X_Start, panning right from X_End: kept as they are.
      X_Start = to_int16(X_Start - bins_across / 8);
      if (X_Start < 0) X_Start = 0;
      X_End = to_int32(X_Start + bins_across);
      break;
    case SpectrumButton::PanRight:
      X_End = to_int32(X_End + bins_across / 8);
      if (X_End > kLastBin) X_End = kLastBin;
      X_Start = to_int16(X_End - bins_across);
      break;
  }
  return true;
}

std::string SpectrumAxis::range_text() const { return std::to_string(X_End - X_Start); }
std::string SpectrumAxis::scale_text() const { return general_text(Y_Max * 1000); }
std::string SpectrumAxis::start_text() const { return std::to_string(X_Start); }
std::string SpectrumAxis::end_text() const { return std::to_string(X_End); }

double fitting_scale(double counts) {
  for (const double step : kYScaleSteps) {
    if (step * 1000 >= counts) return step;
  }
  return kYScaleSteps[std::size(kYScaleSteps) - 1];
}

}  // namespace morvane
