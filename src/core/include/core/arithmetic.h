// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <cmath>

#include "core/error.h"

namespace morvane {

// Int(x): the floor of x.
inline double int_part(double x) { return std::floor(x); }

// Conversion of a real value to an integer rounds half to even; a value outside the target
// range is the run-time overflow error, never a wrap-around.
inline int64_t round_half_even(double x) {
  if (!std::isfinite(x)) raise(ErrorNumber::Overflow);
  return static_cast<int64_t>(std::nearbyint(x));  // default rounding mode: to nearest, ties to even
}

inline int32_t to_int32(double x) {
  if (!(x > -2147483648.5 && x < 2147483647.5)) raise(ErrorNumber::Overflow);
  return static_cast<int32_t>(round_half_even(x));
}

inline int16_t to_int16(double x) {
  if (!(x > -32768.5 && x < 32767.5)) raise(ErrorNumber::Overflow);
  return static_cast<int16_t>(round_half_even(x));
}

inline int32_t checked_int32(int64_t x) {
  if (x < INT32_MIN || x > INT32_MAX) raise(ErrorNumber::Overflow);
  return static_cast<int32_t>(x);
}

inline int16_t checked_int16(int64_t x) {
  if (x < INT16_MIN || x > INT16_MAX) raise(ErrorNumber::Overflow);
  return static_cast<int16_t>(x);
}

// A word 0..65535 taken as a signed 16-bit count.
inline int32_t signed_word(int32_t word) { return word > 32767 ? word - 65536 : word; }

// ADC words to volts: a signed 16-bit count x 10 / 32768.
inline double adc_volts(int32_t word) { return signed_word(word) * 10.0 / 32768.0; }

// A real division that the run time refuses by zero.
inline double checked_divide(double numerator, double denominator) {
  if (denominator == 0.0) raise(ErrorNumber::DivisionByZero);
  return numerator / denominator;
}

}  // namespace morvane
