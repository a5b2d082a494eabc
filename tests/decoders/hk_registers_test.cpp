// SPDX-License-Identifier: MIT
#include "decoders/hk_registers.h"

#include <gtest/gtest.h>

#include "decoder_fixture.h"

namespace morvane {
namespace {

using testing::text_at;

TEST(HkRegisters, BinaryTextsAreSixteenBitsBit15First) {
  EXPECT_EQ(binary_text(0xA001), "1 0 1 0 0 0 0 0 0 0 0 0 0 0 0 1 ");
  EXPECT_EQ(binary_text(0xFFFF), "1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 ");
}

std::array<int32_t, 16> words(std::initializer_list<std::pair<int, int32_t>> set) {
  std::array<int32_t, 16> w{};
  for (const auto& [i, value] : set) w[static_cast<size_t>(i - 1)] = value;
  return w;
}

// The critical-functions row takes Ds Up, Ds Dn and HT from the valve word's bits 6-4 and only
// SMA2 and SMA1 from its own word.
TEST(HkRegisters, CriticalFunctionsMixTheValveWordAndTheirOwn) {
  const std::pair<std::array<int32_t, 16>, std::array<const char*, 5>> cases[] = {
      {words({{2, 0x0040}}), {" En", "  - ", "  - ", "  - ", "  - "}},
      {words({{2, 0x0030}}), {"  - ", " En", " En", "  - ", "  - "}},
      {words({{3, 0x0070}}), {"  - ", "  - ", "  - ", "  - ", "  - "}},
      {words({{3, 0x0002}}), {"  - ", "  - ", "  - ", " En", "  - "}},
      {words({{2, 0x0003}, {3, 0x0001}}), {"  - ", "  - ", "  - ", "  - ", " En"}},
  };
  for (const auto& [w, states] : cases) {
    const Drawing page = draw_register_page(w);
    for (int i = 1; i <= 5; ++i) {
      EXPECT_EQ(text_at(page, 1000 * i - 400, 1600), states[static_cast<size_t>(i - 1)]) << i << " " << w[1];
    }
  }
  // The header shows the critical functions word, whichever of its bits the row ignores.
  EXPECT_EQ(text_at(draw_register_page(words({{3, 0x0070}})), 0, 1200), "Critical functions enable register    0070");
}

}  // namespace
}  // namespace morvane
