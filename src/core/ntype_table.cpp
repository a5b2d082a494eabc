// SPDX-License-Identifier: MIT
#include "core/ntype_table.h"

#include <algorithm>
#include <string>

#include "core/arithmetic.h"
#include "core/error.h"

namespace morvane {

void NTypeTable::set_points(const std::vector<std::pair<double, double>>& points) {
  if (points.size() > static_cast<size_t>(kMaxPoints)) {
    raise(ErrorNumber::SubscriptOutOfRange, "the N-type table holds at most 100 points, not " +
                                                std::to_string(points.size()));
  }
  *this = NTypeTable();
  count_ = static_cast<int>(points.size());
  for (int i = 1; i <= count_; ++i) {
    x_[static_cast<size_t>(i)] = points[static_cast<size_t>(i - 1)].first;
    y_[static_cast<size_t>(i)] = points[static_cast<size_t>(i - 1)].second;
  }
  const int n = count_;
  if (n < 2) return;
  auto X = [&](int i) { return x_[static_cast<size_t>(i)]; };
  auto Y = [&](int i) { return y_[static_cast<size_t>(i)]; };
  auto at = [](Column& c, int i) -> double& { return c[static_cast<size_t>(i)]; };
  // Points are lines of the file: a repeated or falling value divides by zero somewhere.
  auto divide = [](double numerator, double denominator, int first, int last, const char* what) {
    if (denominator == 0.0) {
      raise(ErrorNumber::DivisionByZero, "N-type points " + std::to_string(first) + " and " + std::to_string(last) +
                                             " (lines " + std::to_string(first) + " and " + std::to_string(last) +
                                             ") have the same " + what);
    }
    return numerator / denominator;
  };
  auto segment_slope = [&](int i) {  // of the segment from point i to i + 1
    return divide(Y(i + 1) - Y(i), X(i + 1) - X(i), i, i + 1, "x");
  };
  // Interior slopes weigh the two neighbouring segments; the ends take their one segment.
  at(slope_, 1) = segment_slope(1);
  at(slope_, n) = segment_slope(n - 1);
  for (int i = 2; i <= n - 1; ++i) {
    const double d1 = segment_slope(i - 1), d2 = segment_slope(i);
    at(slope_, i) = divide(d1 * (X(i + 1) - X(i)) + d2 * (X(i) - X(i - 1)), X(i + 1) - X(i - 1), i - 1, i + 1, "x");
  }
  for (int i = 1; i <= n; ++i) {
    const int next = i < n ? i + 1 : i - 1;
    at(inverse_slope_, i) = divide(1.0, at(slope_, i), std::min(i, next), std::max(i, next), "y");
  }
  for (int i = 1; i <= n - 1; ++i) {
    at(curve_, i) = divide(at(slope_, i + 1) - at(slope_, i), X(i + 1) - X(i), i, i + 1, "x");
    at(inverse_curve_, i) = divide(at(inverse_slope_, i + 1) - at(inverse_slope_, i), Y(i + 1) - Y(i), i, i + 1, "y");
  }
}

double NTypeTable::NType_Lookup(double x) const {
  if (x < x_[1]) return -280;
  if (x > x_[static_cast<size_t>(count_)]) return 2000;
  for (size_t i = 1; i <= 99; ++i) {
    if (x_[i + 1] > x) {
      const double dx = x - x_[i];
      return y_[i] + slope_[i] * dx + curve_[i] * dx * dx / 2;
    }
  }
  return 2000;
}

double NTypeTable::NType_Reverse_Lookup(double y) const {
  if (y < y_[1]) return -6600;
  if (y > y_[static_cast<size_t>(count_)]) return 50000;
  for (size_t i = 1; i <= 99; ++i) {
    if (y_[i + 1] > y) {
      const double dy = y - y_[i];
      return x_[i] + inverse_slope_[i] * dy + inverse_curve_[i] * dy * dy / 2;
    }
  }
  return 50000;
}

}  // namespace morvane
