// SPDX-License-Identifier: MIT
#include "archive/series_blob.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <unordered_map>

#include "core/error.h"

namespace morvane::archive {
namespace {

template <size_t Size>
struct UnsignedOf;
template <>
struct UnsignedOf<2> { using type = uint16_t; };
template <>
struct UnsignedOf<4> { using type = uint32_t; };
template <>
struct UnsignedOf<8> { using type = uint64_t; };

template <typename T>
Blob pack(const std::vector<T>& values) {
  Blob blob(values.size() * sizeof(T));
  if constexpr (std::endian::native == std::endian::little) {
    if (!values.empty()) std::memcpy(blob.data(), values.data(), blob.size());
  } else {
    for (size_t i = 0; i < values.size(); ++i) {
      const auto bits = std::bit_cast<typename UnsignedOf<sizeof(T)>::type>(values[i]);
      for (size_t b = 0; b < sizeof(T); ++b) blob[i * sizeof(T) + b] = static_cast<uint8_t>(bits >> (8 * b));
    }
  }
  return blob;
}

template <typename Bits>
Bits load_le(const uint8_t* bytes) {
  Bits bits = 0;
  for (size_t b = 0; b < sizeof(Bits); ++b) bits |= static_cast<Bits>(static_cast<Bits>(bytes[b]) << (8 * b));
  return bits;
}

void check_length(const Blob& blob, size_t element, const char* what) {
  if (blob.size() % element != 0) {
    raise(ErrorNumber::InputPastEndOfFile, std::string("archive: a ") + what + " BLOB of " +
                                               std::to_string(blob.size()) + " bytes is cut short");
  }
}

}  // namespace

Blob pack_int32(const std::vector<int32_t>& values) { return pack(values); }
Blob pack_int16(const std::vector<int16_t>& values) { return pack(values); }
Blob pack_uint8(const std::vector<uint8_t>& values) { return Blob(values.begin(), values.end()); }

std::vector<int32_t> unpack_int32(const Blob& blob) {
  check_length(blob, 4, "int32");
  std::vector<int32_t> values(blob.size() / 4);
  for (size_t i = 0; i < values.size(); ++i) values[i] = static_cast<int32_t>(load_le<uint32_t>(&blob[i * 4]));
  return values;
}

EncodedValues encode_values(const std::vector<double>& values) {
  // Distinct values by their bits, so that NaNs and signed zeros come back as they went in.
  std::unordered_map<uint64_t, uint8_t> index;
  std::vector<double> palette;
  std::vector<uint8_t> codes;
  codes.reserve(values.size());
  // Telemetry changes slowly: most values repeat the one before.
  uint64_t last_bits = 0;
  uint8_t last_code = 0;
  for (double value : values) {
    const auto bits = std::bit_cast<uint64_t>(value);
    if (!codes.empty() && bits == last_bits) {
      codes.push_back(last_code);
      continue;
    }
    auto found = index.find(bits);
    if (found == index.end()) {
      if (palette.size() == 256) return {kFloat64Encoding, {}, pack(values)};
      found = index.emplace(bits, static_cast<uint8_t>(palette.size())).first;
      palette.push_back(value);
    }
    codes.push_back(found->second);
    last_bits = bits;
    last_code = found->second;
  }
  return {kPaletteEncoding, pack(palette), std::move(codes)};
}

void decode_values(const std::string& encoding, const Blob& palette, const Blob& data, std::vector<double>& out) {
  if (encoding == kFloat64Encoding) {
    check_length(data, 8, "float64");
    for (size_t i = 0; i < data.size(); i += 8) out.push_back(std::bit_cast<double>(load_le<uint64_t>(&data[i])));
    return;
  }
  if (encoding != kPaletteEncoding) raise(ErrorNumber::TypeMismatch, "archive: unknown value encoding " + encoding);
  check_length(palette, 8, "palette");
  std::vector<double> colours(palette.size() / 8);
  for (size_t i = 0; i < colours.size(); ++i) colours[i] = std::bit_cast<double>(load_le<uint64_t>(&palette[i * 8]));
  out.reserve(out.size() + data.size());
  for (uint8_t code : data) {
    if (code >= colours.size()) raise(ErrorNumber::SubscriptOutOfRange, "archive: a value index past its palette");
    out.push_back(colours[code]);
  }
}

}  // namespace morvane::archive
