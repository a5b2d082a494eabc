// SPDX-License-Identifier: MIT
#include "archive/series_blob.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>

#include "core/error.h"

namespace morvane::archive {
namespace {

std::vector<double> round_trip(const std::vector<double>& values) {
  const EncodedValues encoded = encode_values(values);
  std::vector<double> out;
  decode_values(encoded.encoding, encoded.palette, encoded.data, out);
  return out;
}

TEST(SeriesBlob, FewDistinctValuesTakeAPaletteAndAByteEachAndMoreThan256AreKeptWhole) {
  std::vector<double> few;
  std::vector<double> many;
  for (int i = 0; i < 1000; ++i) few.push_back((i % 256) * 0.25 - 3);
  for (int i = 0; i < 300; ++i) many.push_back(i / 7.0);
  const EncodedValues palette = encode_values(few);
  EXPECT_EQ(palette.encoding, "palette");
  EXPECT_EQ(palette.data.size(), 1000u);
  EXPECT_EQ(palette.palette.size(), 256u * 8);
  EXPECT_EQ(encode_values(many).encoding, "float64");
  EXPECT_EQ(round_trip(few), few);
  EXPECT_EQ(round_trip(many), many);
}

TEST(SeriesBlob, NaNAndSignedZeroComeBackBitForBit) {
  const std::vector<double> values = {NAN, -0.0, 0.0, INFINITY, NAN};
  const auto back = round_trip(values);
  ASSERT_EQ(back.size(), values.size());
  for (size_t i = 0; i < values.size(); ++i) {
    EXPECT_EQ(std::bit_cast<uint64_t>(back[i]), std::bit_cast<uint64_t>(values[i])) << i;
  }
}

TEST(SeriesBlob, NumbersArePackedLittleEndian) {
  EXPECT_EQ(pack_int32({0x01020304, -1}), (Blob{4, 3, 2, 1, 255, 255, 255, 255}));
  EXPECT_EQ(pack_int16({0x0102}), (Blob{2, 1}));
  EXPECT_EQ(unpack_int32(Blob{4, 3, 2, 1}), std::vector<int32_t>{0x01020304});
  const EncodedValues one = encode_values({1.0});
  EXPECT_EQ(one.palette, (Blob{0, 0, 0, 0, 0, 0, 0xF0, 0x3F}));
}

TEST(SeriesBlob, ACutBlobOrUnknownEncodingIsARuntimeError) {
  std::vector<double> out;
  EXPECT_THROW(unpack_int32(Blob{1, 2, 3}), RuntimeError);
  EXPECT_THROW(decode_values("float64", {}, Blob{1, 2, 3}, out), RuntimeError);
  EXPECT_THROW(decode_values("zip", {}, {}, out), RuntimeError);
  EXPECT_THROW(decode_values("palette", Blob(8), Blob{1}, out), RuntimeError);
}

}  // namespace
}  // namespace morvane::archive
