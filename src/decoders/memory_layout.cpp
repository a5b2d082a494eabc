// SPDX-License-Identifier: MIT
#include "decoders/memory_layout.h"

#include <string>

#include "core/arithmetic.h"

namespace morvane {

void Display_Memory_Data(const InformationWords& words, Drawing& out) {
  const int blocks = words.word(9) % 256;
  int x = 0, y = 600;
  auto print = [&](int n, Colour colour) {
    out.push_back({words.hex(n), x, y, colour, Anchor::Left});
    x += 700;
    if (x > 4900) {
      x = 0;
      y += 200;
    }
  };
  int k = 10;
  for (int b = 1; b <= blocks; ++b) {
    print(k, kRed);
    print(k + 1, kRed);
    print(k + 2, kBlack);
    // A count above 32767 is negative: no data words, and the next block starts further back.
    const int n = signed_word(words.word(k + 2));
    for (int d = k + 3; d <= k + 2 + n; ++d) print(d, kBlue);
    k += 3 + n;
  }
}

void Display_Memory_Checksum(const InformationWords& words, Drawing& out) {
  const int reports = words.word(9) % 256;
  for (int r = 1; r <= reports; ++r) {
    const int y = 200 * r;
    out.push_back({"Checksum " + std::to_string(r), 0, y, kBlack, Anchor::Left});
    out.push_back({"Address  " + words.hex(4 * r + 6) + "  " + words.hex(4 * r + 7), 1200, y, kBlack, Anchor::Left});
    out.push_back({"Words " + words.hex(4 * r + 8), 3000, y, kBlack, Anchor::Left});
    out.push_back({"Checksum  =  " + words.hex(4 * r + 9), 4500, y, kBlack, Anchor::Left});
  }
}

}  // namespace morvane
