// SPDX-License-Identifier: MIT
#include "decoders/format_check.h"

#include <gtest/gtest.h>

#include "decoder_fixture.h"

namespace morvane::testing {
namespace {

class FormatCheck : public DecoderTest {
 protected:
  std::optional<std::string> warning_for(const std::string& bytes, FileFormat format, bool byte_reverse = true) {
    write_file(dir.path("f.dat"), bytes);
    session.Byte_Reverse = byte_reverse;
    load_telemetry(session, dir.path("f.dat"), format);
    return format_warning(session);
  }
  static std::string frames(FrameWriter writer) {
    const auto bytes = writer.bytes();
    return std::string(bytes.begin(), bytes.end());
  }
};

TEST_F(FormatCheck, AZebTextLoadedAsQmRaisesADoubtNamingTheFormat) {
  std::vector<std::vector<int32_t>> records;
  for (int k = 0; k < 40; ++k) records.push_back(zeb_record(LabelCode::Concise, {{7, k}, {9, 1000 + k}}));
  const auto warning = warning_for(zeb_text(records), FileFormat::QM);
  ASSERT_TRUE(warning);
  EXPECT_EQ(*warning,
            "no known packet identifier in the first 16 frames: this may not be a QM file "
            "(or the byte order is the other one)");
  EXPECT_FALSE(warning_for(zeb_text(records), FileFormat::ZEB));
}

TEST_F(FormatCheck, TheOtherByteOrderRaisesADoubt) {
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
  EXPECT_FALSE(warning_for(frames(empty), FileFormat::CSS));
  EXPECT_FALSE(warning_for(frames(mixed), FileFormat::CSS));
  EXPECT_TRUE(warning_for(frames(late), FileFormat::CSS));
}

}  // namespace
}  // namespace morvane::testing
