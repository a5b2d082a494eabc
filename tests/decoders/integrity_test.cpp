// SPDX-License-Identifier: MIT
#include "decoders/integrity.h"

#include <gtest/gtest.h>

#include "decoder_fixture.h"

namespace morvane::testing {
namespace {

class Integrity : public DecoderTest {
 protected:
  IntegrityReport check(FrameWriter& writer, FileFormat format = FileFormat::CSS, size_t cut = 0) {
    auto bytes = writer.bytes();
    if (cut) bytes.resize(bytes.size() - cut);
    write_bytes(dir.path("t.dat"), bytes);
    load_telemetry(session, dir.path("t.dat"), format);
    return check_integrity(session);
  }
  static std::vector<std::string> kinds(const IntegrityReport& report) {
    std::vector<std::string> names;
    for (const auto& f : report.findings) {
      names.push_back(std::string(finding_kind_name(f.kind)) + " " + std::string(catalogue_list_name(f.list)) + " " +
                      std::to_string(f.index));
    }
    return names;
  }
};

Packet hk(int32_t sequence, int32_t time) {
  return testing::labelled(LabelCode::Concise, sequence, 51, time);
}

TEST_F(Integrity, SequenceGapsAndRepeatsWrapAt14Bits) {
  FrameWriter writer(282);
  writer.add_frame({hk(16382, 10), hk(16383, 18), hk(0, 26)});  // the wrap is no gap
  writer.add_frame({hk(0, 34), hk(4, 42)});                      // a repeat, then 3 missing
  const auto report = check(writer);
  EXPECT_EQ(kinds(report), (std::vector<std::string>{"sequence_repeat hk 4", "sequence_gap hk 5"}));
  EXPECT_EQ(report.findings[1].text, "The housekeeping sequence count 4 follows 0: 3 packets missing");
}

TEST_F(Integrity, ACountStartingAgainFromZeroIsARestartNotAGap) {
  FrameWriter writer(282);
  writer.add_frame({hk(1349, 10), hk(1350, 18), hk(0, 26)});  // switched on anew
  writer.add_frame({hk(1, 34), hk(3, 42)});                    // then one really missing
  const auto report = check(writer);
  EXPECT_EQ(kinds(report), (std::vector<std::string>{"restart hk 3", "sequence_gap hk 5"}));
  EXPECT_EQ(report.findings[0].text, "The housekeeping sequence count starts again from 0 after 1350");
  EXPECT_EQ(report.counts[static_cast<size_t>(FindingKind::SequenceGap)], 1);
  EXPECT_EQ(report.counts[static_cast<size_t>(FindingKind::Restart)], 1);
}

TEST_F(Integrity, PacketsPastTheirFrameEmptyFramesAndUnknownIdentifiers) {
  FrameWriter writer(282);
  writer.add_frame({testing::labelled(LabelCode::AuxiliaryData, 1, 290, 5)});  // 297 bytes from offset 22
  writer.add_frame({});
  writer.add_frame({hk(2, 6), Packet{0x1234, 0, 11, 0, 0, {}, {}}});
  const auto report = check(writer);
  EXPECT_EQ(kinds(report), (std::vector<std::string>{"past_frame_end science 1", "empty_frame information 1",
                                                     "unknown_identifier information 2"}));
  EXPECT_EQ(report.findings[0].text, "The packet runs 37 bytes past the end of frame 1");
  EXPECT_EQ(report.findings[2].text, "Unknown identifier 0x1234 in frame 3: the rest of it is skipped");
}

TEST_F(Integrity, TheEndOfTheFile) {
  FrameWriter writer(282);
  writer.add_frame({hk(1, 1)});
  writer.add_frame({hk(2, 2)});
  const auto cut = check(writer, FileFormat::CSS, 100);
  EXPECT_EQ(kinds(cut).back(), "partial_frame information 2");
  EXPECT_EQ(cut.findings.back().text, "The file ends inside frame 2, after 182 of its 282 bytes");

  FrameWriter grm(280);
  for (int f = 0; f < 10; ++f) grm.add_frame({hk(f + 1, f + 1)});
  const auto extra = check(grm, FileFormat::GRM);  // 2800 bytes count as 11 frames
  EXPECT_EQ(kinds(extra), (std::vector<std::string>{"past_end_of_file information 11"}));
}

}  // namespace
}  // namespace morvane::testing
