// SPDX-License-Identifier: MIT
#include "postgres_values.h"

#include <bit>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace morvane::archive::postgres {
namespace {

// Type numbers of the built-in types (the server's pg_type.oid, fixed for built-ins).
constexpr Oid kBool = 16;
constexpr Oid kBytea = 17;
constexpr Oid kName = 19;
constexpr Oid kInt8 = 20;
constexpr Oid kInt2 = 21;
constexpr Oid kInt4 = 23;
constexpr Oid k_text = 25;
constexpr Oid kOid = 26;
constexpr Oid kJson = 114;
constexpr Oid kFloat4 = 700;
constexpr Oid kFloat8 = 701;
constexpr Oid kUnknown = 705;
constexpr Oid kBpchar = 1042;
constexpr Oid kVarchar = 1043;
constexpr Oid kNumeric = 1700;

template <class Unsigned>
Unsigned read_big_endian(std::string_view bytes) {
  Unsigned value = 0;
  for (std::size_t i = 0; i < sizeof(Unsigned); ++i) {
    value = static_cast<Unsigned>((value << 8) | static_cast<std::uint8_t>(bytes[i]));
  }
  return value;
}

void write_big_endian(std::uint64_t value, std::string& out) {
  for (int shift = 56; shift >= 0; shift -= 8) {
    out.push_back(static_cast<char>((value >> shift) & 0xFF));
  }
}

// NUMERIC on the wire: digit count, weight, sign, display scale, then base-10000 digits with the
// first one worth 10000^weight.
Value decode_numeric(std::string_view bytes) {
  const int digits = static_cast<std::int16_t>(read_big_endian<std::uint16_t>(bytes));
  const int weight = static_cast<std::int16_t>(read_big_endian<std::uint16_t>(bytes.substr(2)));
  const auto sign = read_big_endian<std::uint16_t>(bytes.substr(4));
  const auto scale = read_big_endian<std::uint16_t>(bytes.substr(6));
  if (sign == 0xC000) return std::numeric_limits<double>::quiet_NaN();
  if (sign == 0xD000) return std::numeric_limits<double>::infinity();
  if (sign == 0xF000) return -std::numeric_limits<double>::infinity();
  const bool negative = sign == 0x4000;
  const auto digit = [&](int i) {
    return static_cast<int>(read_big_endian<std::uint16_t>(bytes.substr(8 + 2 * static_cast<std::size_t>(i))));
  };
  // A whole number (a sum or count of integers) is an integer, as SQLite returns it.
  if (scale == 0) {
    std::int64_t whole = 0;
    bool fits = true;
    for (int group = 0; group <= weight && fits; ++group) {
      const int value = group < digits ? digit(group) : 0;
      fits = !__builtin_mul_overflow(whole, 10000, &whole) &&
             !__builtin_add_overflow(whole, negative ? -value : value, &whole);
    }
    if (fits) return whole;
  }
  // Otherwise through its decimal text, so that the double is the nearest one.
  std::string text = negative ? "-0" : "0";
  for (int i = 0; i < digits; ++i) {
    char group[8];
    std::snprintf(group, sizeof group, "%04d", digit(i));
    text += group;
  }
  text += "e" + std::to_string(4 * (weight - digits + 1));
  return std::strtod(text.c_str(), nullptr);
}

}  // namespace

Parameters::Parameters(const std::vector<Value>& values) {
  storage_.reserve(values.size());
  for (const Value& value : values) {
    std::string& bytes = storage_.emplace_back();
    Oid type = 0;
    int format = 1;
    if (std::holds_alternative<std::monostate>(value)) {
      values_.push_back(nullptr);
      lengths_.push_back(0);
      types_.push_back(0);
      formats_.push_back(0);
      continue;
    }
    if (const auto* integer = std::get_if<std::int64_t>(&value)) {
      type = kInt8;
      write_big_endian(static_cast<std::uint64_t>(*integer), bytes);
    } else if (const auto* real = std::get_if<double>(&value)) {
      type = kFloat8;
      write_big_endian(std::bit_cast<std::uint64_t>(*real), bytes);
    } else if (const auto* text = std::get_if<std::string>(&value)) {
      type = k_text;
      bytes = *text;
      format = 0;
    } else {
      const auto& blob = std::get<Blob>(value);
      type = kBytea;
      bytes.assign(blob.begin(), blob.end());
    }
    values_.push_back(bytes.data());
    lengths_.push_back(static_cast<int>(bytes.size()));
    types_.push_back(type);
    formats_.push_back(format);
  }
  // A text parameter must end with a NUL; std::string keeps one after its data.
}

bool decode_cell(Oid type, std::string_view bytes, Value& cell) {
  switch (type) {
    case kBool:
      cell = static_cast<std::int64_t>(bytes[0] != 0);
      return true;
    case kInt2:
      cell = static_cast<std::int64_t>(static_cast<std::int16_t>(read_big_endian<std::uint16_t>(bytes)));
      return true;
    case kInt4:
      cell = static_cast<std::int64_t>(static_cast<std::int32_t>(read_big_endian<std::uint32_t>(bytes)));
      return true;
    case kOid:
      cell = static_cast<std::int64_t>(read_big_endian<std::uint32_t>(bytes));
      return true;
    case kInt8:
      cell = static_cast<std::int64_t>(read_big_endian<std::uint64_t>(bytes));
      return true;
    case kFloat4:
      cell = static_cast<double>(std::bit_cast<float>(read_big_endian<std::uint32_t>(bytes)));
      return true;
    case kFloat8:
      cell = std::bit_cast<double>(read_big_endian<std::uint64_t>(bytes));
      return true;
    case kNumeric:
      cell = decode_numeric(bytes);
      return true;
    case kBytea:
      cell = Blob(bytes.begin(), bytes.end());
      return true;
    case k_text:
    case kVarchar:
    case kBpchar:
    case kName:
    case kUnknown:
    case kJson:
      cell = std::string(bytes);
      return true;
    default:
      return false;
  }
}

void append_copy_row(const Row& row, std::string& out) {
  static constexpr char hex[] = "0123456789abcdef";
  bool first = true;
  for (const Value& value : row) {
    if (!first) out.push_back('\t');
    first = false;
    if (std::holds_alternative<std::monostate>(value)) {
      out += "\\N";
    } else if (const auto* integer = std::get_if<std::int64_t>(&value)) {
      char digits[24];
      out.append(digits, std::to_chars(digits, digits + sizeof digits, *integer).ptr);
    } else if (const auto* real = std::get_if<double>(&value)) {
      // The shortest text that reads back as the same double.
      char digits[32];
      out.append(digits, std::to_chars(digits, digits + sizeof digits, *real).ptr);
    } else if (const auto* text = std::get_if<std::string>(&value)) {
      for (char c : *text) {
        switch (c) {
          case '\\': out += "\\\\"; break;
          case '\t': out += "\\t"; break;
          case '\n': out += "\\n"; break;
          case '\r': out += "\\r"; break;
          default: out.push_back(c);
        }
      }
    } else {
      // BYTEA's hex input form, its backslash escaped for COPY.
      out += "\\\\x";
      for (std::uint8_t byte : std::get<Blob>(value)) {
        out.push_back(hex[byte >> 4]);
        out.push_back(hex[byte & 0x0F]);
      }
    }
  }
  out.push_back('\n');
}

}  // namespace morvane::archive::postgres
