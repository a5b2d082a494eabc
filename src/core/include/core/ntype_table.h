// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <utility>
#include <vector>

namespace morvane {

// The N-type thermocouple table: up to 100 points (x microvolts, y degrees C) with the slopes
// and curvatures that make its lookups smooth and piecewise quadratic.
class NTypeTable {
 public:
  static constexpr int kMaxPoints = 100;

  // Takes the points in file order and computes the derived arrays. More than 100 points is
  // "Subscript out of range"; two equal x (or y) values, or a flat segment, "Division by zero".
  void set_points(const std::vector<std::pair<double, double>>& points);

  int count() const { return count_; }
  double x(int i) const { return x_[static_cast<size_t>(i)]; }
  double y(int i) const { return y_[static_cast<size_t>(i)]; }

  // Thermocouple microvolts (voltage x 10000 at the channel) to degrees C: -280 below the first
  // point, 2000 above the last or where no segment is found.
  double NType_Lookup(double x) const;
  // Degrees C to thermocouple microvolts: -6600 below the first point, 50000 above the last or
  // where no segment is found.
  double NType_Reverse_Lookup(double y) const;

 private:
  // Indices 1..100 as the table uses them; entries past the loaded points stay 0 and the
  // segment scan reads them, as the original lookup does.
  using Column = std::array<double, kMaxPoints + 2>;
  int count_ = 0;
  Column x_{}, y_{}, slope_{}, curve_{}, inverse_slope_{}, inverse_curve_{};
};

}  // namespace morvane
