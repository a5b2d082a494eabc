// SPDX-License-Identifier: MIT
// The information window: its words, what each packet translates to, and the memory table.
#include "decoders/information_presenter.h"

#include "decoder_fixture.h"
#include "decoders/information_translation.h"
#include "decoders/memory_layout.h"

namespace morvane::testing {
namespace {

TEST(InformationView, WordCountRoundsHalfToEven) {
  const std::pair<int32_t, int> cases[] = {{-1, 0}, {0, 0},   {1, 0},   {2, 1},   {3, 2},  {5, 2},
                                           {7, 4},  {21, 10}, {23, 12}, {63, 32}, {64, 32}};
  for (const auto& [length, words] : cases) EXPECT_EQ(information_word_count(length), words) << length;
}

TEST(InformationView, AShortPacketKeepsTheHigherWordsOfTheOneBefore) {
  LoadedFile file(testing::one_a_frame({information_packet(kEventId, 1, {{9, 55001}, {10, 0xAA00}, {28, 5}, {29, 6}}),
                                         information_packet(kEventId, 1, {{9, 55001}, {10, 0xAA00}}, 20)}));
  InformationPresenter view;
  view.show(file.session, 1);
  view.show(file.session, 3);  // entry 2 is the empty slot after the long packet
  EXPECT_EQ(std::tuple(view.words().count(), view.raw_dump().size()), std::tuple(10, size_t{10}));
  EXPECT_EQ(std::tuple(view.translation()[2].text, view.translation()[3].text),
            std::tuple("Selected RAM data page  5", "Selected RAM code page 6"));
}

TEST(InformationView, AnErrorKeepsWhatTheViewShowed) {
  LoadedFile file(testing::one_a_frame({information_packet(kEventId, 1, {{9, 55113}}, 64),
                                         information_packet(kEventId, 1, {{9, 55114}}, 65),
                                         // One block of 30 data words: words 13..42, of which only 13..32 exist.
                                         information_packet(testing::kMemoryDumpId, 0, {{9, 0x9601}, {12, 30}})}));
  InformationPresenter view;
  view.show(file.session, 1);
  EXPECT_EQ(testing::thrown([&] { view.show(file.session, 3); }).number, 9);  // longer than 64 bytes
  EXPECT_EQ(std::tuple(view.labels().Label3, view.words().word(9), view.raw_dump().size(), view.translation()[0].text),
            std::tuple("Information Pkt 3", 55113, 32u, "RF Calibration report"));
  // A memory table beyond word 32 keeps its rows but not the lines.
  EXPECT_EQ(testing::thrown([&] { view.show(file.session, 5); }).number, 9);
  EXPECT_EQ(std::tuple(view.memory().size(), view.translation()[0].text), std::tuple(23u, ""));  // words 10..32

}

// Words 1..32 as a packet would leave them: every word given, the rest 0.
InformationWords words_of(const std::map<int, int32_t>& given) {
  InformationWords words;
  for (int n = 1; n <= 32; ++n) words.set(n, given.count(n) ? given.at(n) : 0);
  words.set_count(32);
  return words;
}

Drawing dump(const std::map<int, int32_t>& given) {
  Drawing out;
  Display_Memory_Data(words_of(given), out);
  return out;
}

TEST(MemoryLayout, DumpBlocksColourHeaderCountAndData) {
  EXPECT_TRUE(dump({{9, 0x9600}, {12, 3}}).empty());  // no blocks
  // Block 1: words 10, 11, count 12 = 2, data 13-14. Block 2: words 15, 16, count 17 = 0.
  // Block 3 starts right after at word 18.
  const Drawing out = dump({{9, 0x9603}, {10, 0xA}, {11, 0xB}, {12, 2}, {13, 0xD1}, {14, 0xD2}, {15, 0xE}, {16, 0xF},
                            {17, 0}, {18, 0x18}, {19, 0x19}, {20, 1}, {21, 0x21}});
  EXPECT_EQ(out, (std::vector<PlacedText>{
      {"000A", 0, 600, kRed},     {"000B", 700, 600, kRed},  {"0002", 1400, 600, kBlack}, {"00D1", 2100, 600, kBlue},
      {"00D2", 2800, 600, kBlue}, {"000E", 3500, 600, kRed}, {"000F", 4200, 600, kRed},   {"0000", 4900, 600, kBlack},
      // The ninth text wraps to the next row.
      {"0018", 0, 800, kRed},     {"0019", 700, 800, kRed},  {"0001", 1400, 800, kBlack}, {"0021", 2100, 800, kBlue},
  }));
}

TEST(MemoryLayout, ADumpBeyondWord32StopsAfterTheWordsItPrinted) {
  Drawing out;
  EXPECT_EQ(testing::thrown([&] { Display_Memory_Data(words_of({{9, 0x9601}, {12, 30}}), out); }).number, 9);
  ASSERT_EQ(out.size(), 23u);  // words 10..32
  EXPECT_EQ(out.back(), (PlacedText{"0000", 6 * 700, 600 + 2 * 200, kBlue}));
  out.clear();  // eleven blocks of three header words need words up to 42
  EXPECT_EQ(testing::thrown([&] { Display_Memory_Data(words_of({{9, 0x960B}}), out); }).number, 9);
  EXPECT_EQ(out.size(), 23u);
}

Translation lines(std::vector<std::string> texts, std::vector<Colour> colours = {}) {
  Translation t{};
  for (size_t i = 0; i < texts.size(); ++i) t[i].text = texts[i];
  for (size_t i = 0; i < colours.size(); ++i) t[i].colour = colours[i];
  return t;
}

const std::vector<Colour> k_all_red(5, kRed);

// The five red lines of a rejected telecommand with no identifier or sequence control.
Translation rejected(const std::string& reason, const std::string& telecommand, const std::string& last) {
  return lines({"Packet ID of rejected packet         0000", "Sequence control rejected packet 0000", reason,
                telecommand, last},
               k_all_red);
}

using Case = std::tuple<const char*, Packet, Translation>;  // what, the packet, its lines

// Each packet shown alone in a one-frame file translates to the expected lines.
void expect_cases(const std::vector<Case>& cases) {
  for (const auto& [name, packet, expected] : cases) {
    LoadedFile file(one_a_frame({packet}));
    InformationPresenter view;
    view.show(file.session, 1);
    for (size_t i = 0; i < 5; ++i) {
      EXPECT_EQ(std::tie(view.translation()[i].text, view.translation()[i].colour),
                std::tie(expected[i].text, expected[i].colour)) << name << ", line " << i + 1;
    }
  }
}

TEST(InformationTranslation, AcceptanceReports) {
  expect_cases({
      {"success", information_packet(kAcceptanceId, 1, {{9, 0x0F37}, {10, 0xC005}}),
       lines({"Packet ID of accepted packet         0F37", "Sequence control accepted packet C005"})},
      {"incomplete packet",
       information_packet(kAcceptanceId, 2, {{9, 0x1C31}, {10, 0xC00A}, {11, 1}, {12, 0x0602}, {13, 10}, {14, 8}}),
       lines(
           {"Packet ID of rejected packet         1C31", "Sequence control rejected packet C00A", "Incomplete packet ",
            "TC type  6    TC sub-type 2    -    Load memory", "10 bytes in header, 8 bytes actually received"},
           k_all_red)},
      {"checksum", information_packet(kAcceptanceId, 2, {{11, 2}, {12, 0x0605}, {13, 0xBEEF}, {14, 0x00A1}}),
       rejected("Incorrect Checksum ", "TC type  6    TC sub-type 5    -    Dump memory",
                "Checksum received: BEEF  Calculated checksum: 00A1")},
      {"unknown code", information_packet(kAcceptanceId, 2, {{11, 7}, {12, 0xC111}}),
       rejected("Error code, 7, not known", "TC type  193    TC sub-type 17    -    ",
                "You'll have to sort out what's happening")},
      {"unknown acceptance", information_packet(kAcceptanceId, 3, {}),
       lines({"Unknown Acceptance Packet", "I haven't a clue what's happening"})},
  });
}

TEST(InformationTranslation, ProgressEvents) {
  std::map<int, int32_t> quiet_power_on{{9, 55001}, {10, 0xAA00}, {28, 3}, {29, 4}};
  std::map<int, int32_t> noisy_power_on = quiet_power_on;
  noisy_power_on[27] = 1;
  const std::string anomalies = "Anomalies detected, there are lots of start-up parameters - use the TC/TM document";
  expect_cases({
      {"below the table", information_packet(kEventId, 1, {{9, 55000}}),
       lines({"Unknown Event ID", "You're on you own for this one"})},
      {"normal power-on", information_packet(kEventId, 1, quiet_power_on),
       lines({"Morvane Power-on start", "Normal startup - no anomalies detected", "Selected RAM data page  3",
              "Selected RAM code page 4"})},
      {"power-on with a start-up word set", information_packet(kEventId, 1, noisy_power_on),
       lines({"Morvane Power-on start", anomalies, "Selected RAM data page  3", "Selected RAM code page 4"},
             {kBlack, kRed})},
      {"instrument backup",
       information_packet(kEventId, 1, {{9, 55011}, {10, 1}, {11, 2}, {12, 3}, {13, 4}, {14, 5}, {15, 6}}),
       lines({"Morvane Backup RAM Received", "Carousel use state 0001         RF Calibration word0002",
              "Docking station motor,     upper position 0003,   lower position 0004",
              "Docking station sensor value,   docked 0005,         undocked 0006"})},
  });
}

TEST(InformationTranslation, AnomalousEvents) {
  const auto titled = [](int32_t id, const char* title) {
    return Case{title, information_packet(kEventId, 2, {{9, id}}), lines({title}, k_all_red)};
  };
  expect_cases({
      titled(55003, "Morvane Timeout"), titled(55112, "No RAM page available for Science data packet storage"),
      titled(55001, "Unknown cause of anomalous warning packet"),
      titled(55107, "Unknown cause of anomalous warning packet"),
      {"connection test", information_packet(kEventId, 2, {{9, 0}}),
       lines({"Connection Test", "", "All OK"}, {kBlack, kRed, kBlack, kRed, kRed})},
      {"failure", information_packet(kEventId, 2, {{9, 55002}, {11, 0x11}, {12, 0x22}, {13, 0x33}, {14, 0x44}}),
       lines({"Morvane Failure", "DAC Control Register                     0011",
              "PWM Control Register                   0022", "Valve Control Register                   0033",
              "Critical Functions Control Register 0044"},
             k_all_red)},
      {"mode event parameters",
       information_packet(kEventId, 2,
                          {{9, 55108}, {10, 4}, {11, 17}, {12, 1}, {13, 2}, {14, 3}, {15, 4}, {16, 5}, {17, 6}}),
       lines({"Parameters for a mode event are incorrect", "Operating mode 4, at line number 17", "",
              "Mode event parameters causing problem", "0001   0002   0003   0004   0005   0006"},
             k_all_red)},
  });
}

// Sensor 28 (channel 128) converts V x 100 - 273 oC; 0x4000 is 5 V, 0x2000 2.5 V, 0x1000 1.25 V.
TEST(InformationTranslation, LimitEventsHaveTheirOwnSeparators) {
  auto with_id = [](int32_t id) {
    return information_packet(kEventId, 2, {{9, id}, {10, 128}, {11, 0x4000}, {12, 0x2000}, {13, 0x1000}});
  };
  expect_cases({
      {"safe limit", with_id(55007),
       lines({"Safe limit violation", "Sensor 28 reading exceeded safe limit",
              "Sensor ADC reading 4000    -   227.000 oC", "Maximum safe limit 2000(hex)  -   -23.000 oC",
              "Minimum safe limit 1000(hex)  -   -148.000 oC"},
             k_all_red)},
      {"operating limit", with_id(55008),
       lines({"Operating limit excursion", "Sensor 28 reading exceeded normal operating limit",
              "Sensor ADC reading 4000(hex)    -   227.000 oC", "Maximum operating limit 2000(hex)  -   -23.000 oC",
              "Minimum operating limit  1000(hex)  -   -148.000 oC"},
             k_all_red)},
  });
}

TEST(InformationTranslation, MemoryTitles) {
  const std::string dump = "Memory dump          Total of 0 blocks of memory";
  expect_cases({
      {"PROM dump", information_packet(kMemoryDumpId, 0, {{9, 0x9600}}), lines({dump, "Memory type - PROM"})},
      {"RAM dump", information_packet(kMemoryDumpId, 0, {{9, 0x9801}, {12, 0}}),
       lines({"Memory dump          Total of 1 blocks of memory", "Memory type - RAM"})},
      {"unknown dump", information_packet(kMemoryDumpId, 0, {{9, 0x9900}}),
       lines({dump, "Unknown memory type"}, {kBlack, kRed})},
      {"one checksum", information_packet(kEventId, 10, {{9, 0x9701}}),
       lines({"Memory Checksum packet of EEPROM.    1 Checksum report."})},
      {"two checksums", information_packet(kEventId, 10, {{9, 0x9902}}),
       lines({"Memory Checksum packet of Unknown memory type.    2 Checksum reports."})},
      {"empty", Packet{}, lines({"Looks like an empty packet, perhaps Morvane is bored"})},
      {"unknown", Packet{0x0F99, 0, 11, 0, 0, {}, {}}, lines({"Unknown packet - user to interpret"})},
  });
}

TEST(InformationTranslation, LineResultsTakeWordsAbove32767Less65535) {
  const Configuration config = testing::numbered_configuration();
  const std::pair<int32_t, const char*> cases[] = {
      {0x0000, "-273.000 oC"},   // 0 V
      {0xFFFF, "-273.000 oC"},   // 65535 - 65535 = 0 V, not -1 count
      {0x8000, "-1272.969 oC"},  // -32767 x 10 / 32768 V
      {0x7FFF, "726.969 oC"},
  };
  for (const auto& [word, text] : cases) EXPECT_EQ(get_line_result(config, 128, word), text) << word;
  // No row matches: row 255 gives 0 and no unit.
  EXPECT_EQ(std::tuple(get_line_result(config, 65535, 0x4000), get_line_result(config, 7, 0x1234)),
            std::tuple("0.000 ", "0.000 "));

}

}  // namespace
}  // namespace morvane::testing
