// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "archive/database.h"

namespace morvane::archive {

// The dense per-packet series are kept in BLOBs of packed little-endian numbers, so that any
// client reads them with a plain unpack (Python: struct or numpy.frombuffer).

Blob pack_int32(const std::vector<int32_t>& values);
Blob pack_int16(const std::vector<int16_t>& values);
Blob pack_uint8(const std::vector<uint8_t>& values);
// Raises RuntimeError when the BLOB's length is not a whole number of elements.
std::vector<int32_t> unpack_int32(const Blob& blob);

// A chunk of calibrated values. "palette": at most 256 distinct values, stored once as float64
// in palette and one uint8 index a value in data (a sensor byte gives at most 256 values);
// "float64": every value as float64 in data, palette empty.
struct EncodedValues {
  std::string encoding;
  Blob palette;
  Blob data;
};
inline constexpr const char* kPaletteEncoding = "palette";
inline constexpr const char* kFloat64Encoding = "float64";

EncodedValues encode_values(const std::vector<double>& values);
// Appends the decoded values to out; an unknown encoding or a bad length is a RuntimeError.
void decode_values(const std::string& encoding, const Blob& palette, const Blob& data, std::vector<double>& out);

}  // namespace morvane::archive
