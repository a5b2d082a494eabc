// SPDX-License-Identifier: MIT
#include "decoders/hk_registers.h"

#include "core/number_text.h"

namespace morvane {

std::string Convert_to_Hex(int32_t value) { return hex4(value); }

std::string binary_text(int32_t word) {
  std::string text;
  for (int bit = 15; bit >= 0; --bit) text += (word >> bit) & 1 ? "1 " : "0 ";
  return text;
}

std::array<int32_t, 16> read_register_words(const Session& session, int32_t index) {
  const Packet_Entry& entry = session.catalogue.HK_List.at(index);
  const TelemetryFile& file = session.telemetry();
  std::array<int32_t, 16> words{};
  for (int i = 1; i <= 16; ++i) words[static_cast<size_t>(i - 1)] = file.packet_word(entry, 62 + 2 * i, session.Byte_Reverse);
  return words;
}

namespace {

// Collects the page's texts, all in the sensor page's blue.
class RegisterPainter {
 public:
  void text(std::string text, int x, int y) { drawing_.push_back(PlacedText{std::move(text), x, y, kBlue}); }

  // A named bit: the name, and below it whether the bit is set.
  void bit_cell(const char* name, int x, int y, int32_t word, int bit) {
    text(name, x, y);
    text((word >> bit) & 1 ? " En" : "  - ", x, y + 200);
  }

  // Sixteen names for the bits of one word, bit 15 first, in two rows of eight.
  void bit_rows(const char* const (&names)[16], int32_t word, int first_y, int second_y) {
    for (int i = 1; i <= 16; ++i) {
      const bool first_row = i <= 8;
      bit_cell(names[i - 1], first_row ? 600 * i : 600 * i - 4800, first_row ? first_y : second_y, word, 16 - i);
    }
  }

  Drawing take() { return std::move(drawing_); }

 private:
  Drawing drawing_;
};

}  // namespace

Drawing draw_register_page(const std::array<int32_t, 16>& words) {
  RegisterPainter page;
  auto W = [&words](int i) { return words[static_cast<size_t>(i - 1)]; };  // W1..W16

  static const char* const kValves[16] = {"VC", "VB", "VA", "V16", "V15", "V14", "V13", "V11",
                                          "V10", "V9", "V8", "V7", "V6", "V4", "V2", "V1"};
  page.text("Valve enable register    " + Convert_to_Hex(W(2)), 0, 0);
  page.bit_rows(kValves, W(2), 200, 600);

  // "Ds Up", "Ds Dn" and "HT" come from bits 6-4 of the valve word, SMA2/SMA1 from bits 1-0 of the
  // critical functions word whose hex the header shows: the instrument's own mixture, kept.
  static const char* const kCritical[5] = {"Ds Up", "Ds Dn", "HT", "SMA2", "SMA1"};
  page.text("Critical functions enable register    " + Convert_to_Hex(W(3)), 0, 1200);
  for (int i = 1; i <= 5; ++i) {
    page.bit_cell(kCritical[i - 1], 1000 * i - 400, 1400, i <= 3 ? W(2) : W(3), i <= 3 ? 7 - i : 5 - i);
  }

  static const char* const kPwm[16] = {"Oven", "Pipe", "Ion", "Enc2", "Enc1", "GC", "R15", "R13",
                                       "R9/14", "R8", "R7", "R6", "R5", "R4", "R2", "R1"};
  page.text("PWM enable register    " + Convert_to_Hex(W(4)), 0, 2000);
  page.bit_rows(kPwm, W(4), 2200, 2600);

  page.text("Control Register Contents:         Word(Hex)                  Binary", 0, 3200);
  static const char* const kControls[4] = {"DAC control", "Valve control", "CF control", "PWM control"};
  for (int i = 1; i <= 4; ++i) {
    const int y = 3200 + 200 * i;
    page.text(kControls[i - 1], 500, y);
    page.text(Convert_to_Hex(W(i + 4)), 2500, y);
    page.text(binary_text(W(i + 4)), 3500, y);
  }

  struct SingleWord {
    const char* label;
    int x, y, word, hex_x;
  };
  static const SingleWord kSingles[] = {
      {"Background task ", 0, 4400, 1, 2400},
      {"RIU status word  ", 3300, 4400, 9, 5700},
      {"Mode event sequence state", 0, 4600, 12, 2400},
      {"Last service request word ", 3300, 4600, 10, 5700},
      {"Science data transmission state   ", 0, 4800, 13, 2400},
      {"Last service request word sent ", 3300, 4800, 11, 5700},
      {"Current memory test address  ", 0, 5000, 14, 2400},
      {"Number TC verify packets waiting transmission  ", 0, 5200, 15, 3500},
      {"Number TC event packets waiting transmission ", 0, 5400, 16, 3500},
  };
  for (const auto& single : kSingles) {
    page.text(single.label, single.x, single.y);
    page.text(Convert_to_Hex(W(single.word)), single.hex_x, single.y);
  }
  return page.take();
}

RegisterPage Show_HK_Extra(const Session& session, int32_t index) {
  RegisterPage page;
  page.Register_Words = read_register_words(session, index);
  page.drawing = draw_register_page(page.Register_Words);
  return page;
}

}  // namespace morvane
