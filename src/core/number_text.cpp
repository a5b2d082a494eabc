// SPDX-License-Identifier: MIT
#include "core/number_text.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "core/error.h"

namespace morvane {

std::string format_fixed(double value, int decimals) {
  const bool negative = std::signbit(value) && value != 0.0;
  std::string digits;  // significant digits after rounding, most significant first
  int point = 0;       // digits before the decimal point
  if (value != 0.0 && std::isfinite(value)) {
    char buffer[40];
    std::snprintf(buffer, sizeof buffer, "%.14e", std::fabs(value));
    // buffer: d.dddddddddddddde+XX
    std::string mantissa;
    mantissa += buffer[0];
    mantissa.append(buffer + 2, 14);
    const int exponent = std::atoi(buffer + 17);
    point = exponent + 1;
    const int keep = point + decimals;  // digits of the mantissa that survive
    if (keep < 0) {
      digits.clear();
    } else if (keep >= 15) {
      digits = mantissa;
    } else {
      digits = mantissa.substr(0, static_cast<size_t>(keep));
      if (mantissa[static_cast<size_t>(keep)] >= '5') {
        int i = keep - 1;
        while (i >= 0 && digits[static_cast<size_t>(i)] == '9') digits[static_cast<size_t>(i--)] = '0';
        if (i >= 0) {
          ++digits[static_cast<size_t>(i)];
        } else {
          digits.insert(digits.begin(), '1');
          ++point;
        }
      }
    }
  }
  // Lay the digits out around the decimal point.
  auto digit_at = [&](int position) -> char {  // position 0 = first significant digit
    return position >= 0 && position < static_cast<int>(digits.size()) ? digits[static_cast<size_t>(position)] : '0';
  };
  std::string text = negative ? "-" : "";
  if (digits.empty() || point <= 0) {
    text += '0';
  } else {
    for (int i = 0; i < point; ++i) text += digit_at(i);
  }
  if (decimals > 0) {
    text += '.';
    for (int d = 0; d < decimals; ++d) text += digits.empty() ? '0' : digit_at(point + d);
  }
  return text;
}

std::string format_pattern(double value, std::string_view pattern) {
  const auto dot = pattern.find('.');
  const int decimals = dot == std::string_view::npos ? 0 : static_cast<int>(pattern.size() - dot - 1);
  return format_fixed(value, decimals);
}

std::string general_text(double value) {
  if (value == 0.0) return "0";
  char buffer[40];
  std::snprintf(buffer, sizeof buffer, "%.15G", value);
  return buffer;
}

std::string number_text(double value) {
  std::string text = general_text(value);
  return text[0] == '-' ? text : " " + text;
}

static int pad_width(std::string_view text, int width) {
  const int pad = width - static_cast<int>(text.size());
  if (pad < 0) {
    raise(ErrorNumber::InvalidProcedureCall,
          "\"" + std::string(text) + "\" is wider than its column of " + std::to_string(width));
  }
  return pad;
}

std::string left_in(std::string_view text, int width) {
  return std::string(text) + std::string(static_cast<size_t>(pad_width(text, width)), ' ');
}

std::string right_in(std::string_view text, int width) {
  return std::string(static_cast<size_t>(pad_width(text, width)), ' ') + std::string(text);
}

std::string left_in(int64_t number, int width) { return left_in(std::to_string(number), width); }
std::string right_in(int64_t number, int width) { return right_in(std::to_string(number), width); }

std::string hex4(int32_t word) {
  char buffer[16];
  std::snprintf(buffer, sizeof buffer, "%04X", static_cast<unsigned>(word));
  return buffer;
}

std::string hex2(int32_t byte) {
  char buffer[16];
  std::snprintf(buffer, sizeof buffer, "%02X", static_cast<unsigned>(byte));
  return buffer;
}

}  // namespace morvane
