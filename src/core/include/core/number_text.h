// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace morvane {

// A number written with a pattern such as "###0", "###0.00", "0.000", "#0.0000", "0.00000":
// at least one integer digit, exactly the decimals the pattern shows, no thousands separator.
// Rounds half away from zero on the value's 15-significant-digit decimal form, so 2.675 gives
// "2.68" and -0.125 gives "-0.13"; a negative value keeps its sign when it rounds to zero
// ("-0.00") while -0.0 counts as zero.
std::string format_pattern(double value, std::string_view pattern);
std::string format_fixed(double value, int decimals);

// The default decimal text of a double: at most 15 significant digits, no trailing zeros,
// "0.5" rather than ".5", an exponent only where %.15G uses one ("1.5E-07", "2E+15").
std::string general_text(double value);

// A number as a file line writes it: the general text with a leading blank standing in for the
// plus sign of a non-negative value (" 5", " 56.25", "-3").
std::string number_text(double value);

// "text followed by blanks up to width" and "blanks up to width followed by text". A text longer
// than its column is the run-time error "Invalid procedure call or argument" (a negative pad).
std::string left_in(std::string_view text, int width);
std::string right_in(std::string_view text, int width);
std::string left_in(int64_t number, int width);
std::string right_in(int64_t number, int width);

// Upper-case hexadecimal of a word, at least four digits ("001A", "ABCD").
std::string hex4(int32_t word);
// Upper-case hexadecimal of a byte, always two digits ("0F").
std::string hex2(int32_t byte);

}  // namespace morvane
