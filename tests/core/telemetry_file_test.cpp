// SPDX-License-Identifier: MIT
#include "core/telemetry_file.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "test_files.h"
#include "thrown.h"

namespace morvane {
namespace {

using testing::TempDir;

int32_t count_of(const TempDir& dir, size_t bytes, FileFormat format) {
  testing::write_bytes(dir.path("f"), std::vector<uint8_t>(bytes, 0));
  return TelemetryFile(dir.path("f"), format).Get_Packet_Count();
}

TEST(FrameCount, RoundsUpAndCountsGrmFramesBy256) {
  TempDir dir;
  EXPECT_EQ(count_of(dir, 0, FileFormat::CSS), 0);
  EXPECT_EQ(count_of(dir, 1, FileFormat::QM), 1);
  EXPECT_EQ(count_of(dir, 564, FileFormat::CSS), 2);
  EXPECT_EQ(count_of(dir, 565, FileFormat::CSS), 3);
  EXPECT_EQ(count_of(dir, 560, FileFormat::GRM), 3);  // two 280-byte frames count as three
  EXPECT_EQ(count_of(dir, 512, FileFormat::FM), 2);
}

TEST(FrameCount, ZebCountsRecordsAfterTheHeaderRoundingUp) {
  TempDir dir;
  auto items = [](int n) {
    std::string text;
    for (int i = 0; i < n; ++i) text += (i % 10 ? "," : "\n") + std::to_string(i);
    return text;
  };
  const std::pair<int, int> cases[] = {{136 * 11, 10}, {136 * 11 + 5, 11}, {0, -1}, {5, 0}, {136, 0}, {137, 1}};
  for (const auto& [n, records] : cases) {
    testing::write_file(dir.path("z"), items(n));
    EXPECT_EQ(TelemetryFile(dir.path("z"), FileFormat::ZEB).Get_Packet_Count(), records) << n << " items";
  }
}

TEST(FrameCount, ZebItemsSplitOnCommasBlanksAndLineBreaks) {
  TempDir dir;
  testing::write_file(dir.path("z"), "1,2 3\t4\r\n5,,6   \n\n7");
  EXPECT_EQ(ZebText(FileBytes(dir.path("z"))).item_count(), 7);
}

TEST(GetWord, ByteOrderFollowsByteReverse) {
  TempDir dir;
  testing::write_bytes(dir.path("f"), {0x34, 0x0F, 0x01, 0xAB});
  TelemetryFile file(dir.path("f"), FileFormat::CSS);
  EXPECT_EQ(file.Get_Word(1, true), 0x0F34);
  EXPECT_EQ(file.Get_Word(1, false), 0x340F);
  EXPECT_EQ(file.Get_Word(3, false), 0x01AB);
  EXPECT_EQ(file.Get_Word(4, false), 0xAB00);  // the byte past the end reads 0
  EXPECT_EQ(file.Get_Word(100, true), 0);
  EXPECT_EQ(file.Get_Word(-5, true), 0);
}

TEST(PacketByte, ZebBytesComeFromTheRecordItems) {
  TempDir dir;
  testing::write_file(dir.path("z"), testing::zeb_text({testing::zeb_record({{9, 0x0F34}, {10, -2}, {11, 70000}})}));
  TelemetryFile file(dir.path("z"), FileFormat::ZEB);
  Packet_Entry entry;
  entry.Packet_Frame = 1;
  EXPECT_EQ(file.packet_byte(entry, 0, true), 0x0F);
  EXPECT_EQ(file.packet_byte(entry, 1, false), 0x34);
  EXPECT_EQ(file.packet_byte(entry, 2, false), 0xFF);  // -2 + 65536 = 0xFFFE
  EXPECT_EQ(file.packet_byte(entry, 3, false), 0xFE);
  EXPECT_EQ(file.packet_word(entry, 0, true), 0x0F34);
  EXPECT_THROW(file.packet_byte(entry, 4, false), RuntimeError);    // 70000 does not fit a word
  EXPECT_THROW(file.packet_byte(entry, 256, false), RuntimeError);  // beyond item 136
}

TEST(ZebRecord, AFileCutShortAfterItsScanIsInputPastEndOfFileNotAHang) {
  TempDir dir;
  const std::string text = testing::zeb_text(
      {testing::zeb_record(LabelCode::HousekeepingUnknown), testing::zeb_record(LabelCode::UnknownProgressEvent)});
  testing::write_file(dir.path("z"), text);
  TelemetryFile file(dir.path("z"), FileFormat::ZEB);
  ASSERT_EQ(file.Get_Packet_Count(), 2);
  std::filesystem::resize_file(dir.path("z"), text.size() / 2);
  EXPECT_EQ(testing::thrown([&] { file.zeb().record(2); }).number, 62);
}

TEST(ZebRecord, TextWhereANumberBelongsIsATypeMismatch) {
  TempDir dir;
  auto record = testing::zeb_record({{5, testing::zeb_id(PacketKind::Housekeeping)}});
  std::string text = testing::zeb_text({record});
  text.replace(text.rfind(std::to_string(testing::zeb_id(PacketKind::Housekeeping))), 4, "abcd");
  testing::write_file(dir.path("z"), text);
  TelemetryFile file(dir.path("z"), FileFormat::ZEB);
  const testing::Thrown mismatch = testing::thrown([&] { file.zeb().record(1); });
  EXPECT_EQ(mismatch.number, 13);
  EXPECT_PRED2(testing::contains, mismatch.message, "item 5");
}

TEST(TelemetryFile, AMissingFileIsFileNotFoundNamingIt) {
  const testing::Thrown missing = testing::thrown([] { TelemetryFile("/no/such/file.dat", FileFormat::CSS); });
  EXPECT_EQ(missing.number, 53);
  EXPECT_PRED2(testing::contains, missing.message, "/no/such/file.dat");
}

}  // namespace
}  // namespace morvane
