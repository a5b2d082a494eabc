// SPDX-License-Identifier: MIT
// What a file's frames say of it: the integrity findings, and the doubt that it is of its format.
#include "decoders/integrity.h"

#include "decoder_fixture.h"
#include "decoders/format_check.h"

namespace morvane::testing {
namespace {

class Integrity : public DecoderTest {
 protected:
  void load_bytes(const std::string& bytes, FileFormat format) {
    write_file(dir.path("t.dat"), bytes);
    load_telemetry(session, dir.path("t.dat"), format);
  }
  // The writer's frames less the last `cut` bytes.
  IntegrityReport check(FileFormat format = FileFormat::CSS, size_t cut = 0) {
    load_bytes(frames(writer).substr(0, writer.bytes().size() - cut), format);
    return check_integrity(session);
  }
  std::optional<std::string> warning_for(const std::string& bytes, FileFormat format, bool byte_reverse = true) {
    session.Byte_Reverse = byte_reverse;
    load_bytes(bytes, format);
    return format_warning(session);
  }
  static std::string frames(FrameWriter writer) { return {writer.bytes().begin(), writer.bytes().end()}; }
  static std::vector<std::string> kinds(const IntegrityReport& report) {
    std::vector<std::string> names;
    for (const auto& f : report.findings) {
      names.push_back(std::string(finding_kind_name(f.kind)) + " " + std::string(catalogue_list_name(f.list)) + " " +
                      std::to_string(f.index));
    }
    return names;
  }
  FrameWriter writer{282};
};

Packet hk(int32_t sequence, int32_t time) { return labelled(LabelCode::Concise, sequence, 51, time); }

TEST_F(Integrity, SequenceGapsAndRepeatsWrapAt14Bits) {
  writer.add_frame({hk(16382, 10), hk(16383, 18), hk(0, 26)});  // the wrap is no gap
  writer.add_frame({hk(0, 34), hk(4, 42)});                      // a repeat, then 3 missing
  const auto report = check();
  EXPECT_EQ(kinds(report), (std::vector<std::string>{"sequence_repeat hk 4", "sequence_gap hk 5"}));
  EXPECT_EQ(report.findings[1].text, "The housekeeping sequence count 4 follows 0: 3 packets missing");
}

TEST_F(Integrity, ACountStartingAgainFromZeroIsARestartNotAGap) {
  writer.add_frame({hk(1349, 10), hk(1350, 18), hk(0, 26)});  // switched on anew
  writer.add_frame({hk(1, 34), hk(3, 42)});                    // then one really missing
  const auto report = check();
  EXPECT_EQ(kinds(report), (std::vector<std::string>{"restart hk 3", "sequence_gap hk 5"}));
  EXPECT_EQ(report.findings[0].text, "The housekeeping sequence count starts again from 0 after 1350");
  EXPECT_EQ(std::tuple(report.counts[static_cast<size_t>(FindingKind::SequenceGap)],
                       report.counts[static_cast<size_t>(FindingKind::Restart)]), std::tuple(1, 1));
}

TEST_F(Integrity, PacketsPastTheirFrameEmptyFramesAndUnknownIdentifiers) {
  writer.add_frame({testing::labelled(LabelCode::AuxiliaryData, 1, 290, 5)});  // 297 bytes from offset 22
  writer.add_frame({});
  writer.add_frame({hk(2, 6), Packet{0x1234, 0, 11, 0, 0, {}, {}}});
  const auto report = check();
  EXPECT_EQ(kinds(report), (std::vector<std::string>{"past_frame_end science 1", "empty_frame information 1",
                                                     "unknown_identifier information 2"}));
  EXPECT_EQ(report.findings[0].text, "The packet runs 37 bytes past the end of frame 1");
  EXPECT_EQ(report.findings[2].text, "Unknown identifier 0x1234 in frame 3: the rest of it is skipped");
}

TEST_F(Integrity, TheEndOfTheFile) {
  writer.add_frame({hk(1, 1)});
  writer.add_frame({hk(2, 2)});
  const auto cut = check(FileFormat::CSS, 100);
  EXPECT_EQ(kinds(cut).back(), "partial_frame information 2");
  EXPECT_EQ(cut.findings.back().text, "The file ends inside frame 2, after 182 of its 282 bytes");

  writer = FrameWriter(280);
  for (int f = 0; f < 10; ++f) writer.add_frame({hk(f + 1, f + 1)});
  const auto extra = check(FileFormat::GRM);  // 2800 bytes count as 11 frames
  EXPECT_EQ(kinds(extra), (std::vector<std::string>{"past_end_of_file information 11"}));
}

class FormatCheck : public Integrity {};

TEST_F(FormatCheck, AZebTextLoadedAsQmRaisesADoubtNamingTheFormatAndSoDoesTheOtherByteOrder) {
  std::vector<std::vector<int32_t>> records;
  for (int k = 0; k < 40; ++k) records.push_back(zeb_record(LabelCode::Concise, {{7, k}, {9, 1000 + k}}));
  const auto warning = warning_for(zeb_text(records), FileFormat::QM);
  ASSERT_TRUE(warning);
  EXPECT_EQ(*warning,
            "no known packet identifier in the first 16 frames: this may not be a QM file "
            "(or the byte order is the other one)");
  EXPECT_FALSE(warning_for(zeb_text(records), FileFormat::ZEB));
  // So does the other byte order.
  const std::string file = frames(one_a_frame({hk_packet(1), hk_packet(2)}, 282, true));
  EXPECT_FALSE(warning_for(file, FileFormat::CSS, true));
  EXPECT_TRUE(warning_for(file, FileFormat::CSS, false));
}

TEST_F(FormatCheck, AKnownPacketInTheFirstSixteenFramesOrOnlyEmptyFramesRaiseNone) {
  const Packet unknown{0x1234, 0, 11, 0, 0, {}, {}};
  FrameWriter empty(282), mixed(282), late(282);
  for (int f = 0; f < 20; ++f) empty.add_frame({});
  for (int f = 0; f < 15; ++f) mixed.add_frame({unknown});
  mixed.add_frame({hk_packet(1)});
  late.add_frame({unknown});
  for (int f = 0; f < 16; ++f) late.add_frame({});
  late.add_frame({hk_packet(1)});
  EXPECT_EQ(std::tuple(warning_for(frames(empty), FileFormat::CSS).has_value(),
                       warning_for(frames(mixed), FileFormat::CSS).has_value(),
                       warning_for(frames(late), FileFormat::CSS).has_value()), std::tuple(false, false, true));

}

}  // namespace
}  // namespace morvane::testing
