// SPDX-License-Identifier: MIT
// A telemetry file on disk, and one in memory (the fuzzers' input) that reads as the same on disk.
#include "core/telemetry_file.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

#include "core/session.h"
#include "sim/telemetry_writer.h"
#include "test_files.h"
#include "thrown.h"

namespace morvane {
namespace {

using testing::TempDir;

TEST(FrameCount, RoundsUpAndCountsGrmFramesBy256) {
  TempDir dir;
  // Two 280-byte frames count as three.
  const std::tuple<size_t, FileFormat, int32_t> cases[] = {{0, FileFormat::CSS, 0},   {1, FileFormat::QM, 1},
                                                           {564, FileFormat::CSS, 2}, {565, FileFormat::CSS, 3},
                                                           {560, FileFormat::GRM, 3}, {512, FileFormat::FM, 2}};
  for (const auto& [bytes, format, frames] : cases) {
    testing::write_bytes(dir.path("f"), std::vector<uint8_t>(bytes, 0));
    EXPECT_EQ(TelemetryFile(dir.path("f"), format).Get_Packet_Count(), frames) << bytes;
  }
}

TEST(FrameCount, ZebCountsRecordsAfterTheHeaderRoundingUpAndSplitsItemsOnCommasBlanksAndLineBreaks) {
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
  testing::write_file(dir.path("z"), "1,2 3\t4\r\n5,,6   \n\n7");
  EXPECT_EQ(ZebText(FileBytes(dir.path("z"))).item_count(), 7);
}

TEST(GetWord, ByteOrderFollowsByteReverse) {
  TempDir dir;
  testing::write_bytes(dir.path("f"), {0x34, 0x0F, 0x01, 0xAB});
  TelemetryFile file(dir.path("f"), FileFormat::CSS);
  // Word 4 ends in the byte past the end, which reads 0.
  const std::tuple<int32_t, bool, int32_t> cases[] = {{1, true, 0x0F34}, {1, false, 0x340F}, {3, false, 0x01AB},
                                                      {4, false, 0xAB00}, {100, true, 0},     {-5, true, 0}};
  for (const auto& [k, reverse, word] : cases) EXPECT_EQ(file.Get_Word(k, reverse), word) << k << " " << reverse;
}

TEST(PacketByte, ZebBytesComeFromTheRecordItems) {
  TempDir dir;
  testing::write_file(dir.path("z"), testing::zeb_text({testing::zeb_record({{9, 0x0F34}, {10, -2}, {11, 70000}})}));
  TelemetryFile file(dir.path("z"), FileFormat::ZEB);
  const Packet_Entry entry{.Packet_Frame = 1};
  // Item 10 is -2 + 65536 = 0xFFFE.
  const std::tuple<int, bool, int> bytes[] = {{0, true, 0x0F}, {1, false, 0x34}, {2, false, 0xFF}, {3, false, 0xFE}};
  for (const auto& [k, reverse, byte] : bytes) EXPECT_EQ(file.packet_byte(entry, k, reverse), byte) << k;
  EXPECT_EQ(file.packet_word(entry, 0, true), 0x0F34);
  EXPECT_THROW(file.packet_byte(entry, 4, false), RuntimeError);    // 70000 does not fit a word
  EXPECT_THROW(file.packet_byte(entry, 256, false), RuntimeError);  // beyond item 136
}

TEST(ZebRecord, AFileCutShortAfterItsScanIsInputPastEndOfFileNotAHangAndTextForANumberIsATypeMismatch) {
  TempDir dir;
  std::string text = testing::zeb_text(
      {testing::zeb_record(LabelCode::HousekeepingUnknown), testing::zeb_record(LabelCode::UnknownProgressEvent)});
  testing::write_file(dir.path("z"), text);
  TelemetryFile cut(dir.path("z"), FileFormat::ZEB);
  ASSERT_EQ(cut.Get_Packet_Count(), 2);
  std::filesystem::resize_file(dir.path("z"), text.size() / 2);
  EXPECT_EQ(testing::thrown([&] { cut.zeb().record(2); }).number, 62);

  text = testing::zeb_text({testing::zeb_record({{5, testing::zeb_id(PacketKind::Housekeeping)}})});
  text.replace(text.rfind(std::to_string(testing::zeb_id(PacketKind::Housekeeping))), 4, "abcd");
  testing::write_file(dir.path("z2"), text);
  const testing::Thrown mismatch =
      testing::thrown([&] { TelemetryFile(dir.path("z2"), FileFormat::ZEB).zeb().record(1); });
  EXPECT_EQ(mismatch.number, 13);
  EXPECT_PRED2(testing::contains, mismatch.message, "item 5");
}

TEST(TelemetryFile, AMissingFileIsFileNotFoundNamingIt) {
  const testing::Thrown missing = testing::thrown([] { TelemetryFile("/no/such/file.dat", FileFormat::CSS); });
  EXPECT_EQ(missing.number, 53);
  EXPECT_PRED2(testing::contains, missing.message, "/no/such/file.dat");
}



std::string byte_or_error(const Session& session, const Packet_Entry& entry, int k) {
  try {
    return std::to_string(session.telemetry().packet_byte(entry, k, true));
  } catch (const RuntimeError& error) {
    return error.message();
  }
}

// Each entry's position, sequence count, time and label.
std::vector<std::tuple<int32_t, int32_t, int32_t, LabelCode>> entries_of(const EntryList& list) {
  std::vector<std::tuple<int32_t, int32_t, int32_t, LabelCode>> entries;
  for (int32_t i = 1; i <= list.size(); ++i) {
    entries.emplace_back(list[i].Packet_Position, list[i].Sequence_Count, list[i].Lander_Time, list[i].Label);
  }
  return entries;
}

TEST(TelemetryInMemory, CataloguesEveryFormatAsTheSameFileOnDisk) {
  TempDir dir;
  for (const FileFormat format : {FileFormat::QM, FileFormat::FM, FileFormat::ZEB}) {
    const std::string path = dir.path("file");
    sim::TelemetryOptions options;
    options.format = format;
    options.frames = format == FileFormat::ZEB ? 300 : 120;
    sim::write_telemetry(path, options);
    Session disk, memory;
    load_telemetry(disk, path, format);
    const std::string text = testing::read_file(path);
    const std::vector<uint8_t> bytes(text.begin(), text.end());
    load_telemetry(memory, std::make_shared<TelemetryFile>("in memory", bytes, format));


    EXPECT_EQ(std::tie(memory.File_Name, memory.File_Type, memory.Packet_Count),
              std::tuple("in memory", format, disk.Packet_Count));
    for (const auto list : {&Catalogue::HK_List, &Catalogue::Science_List, &Catalogue::Information_List}) {
      EXPECT_EQ(entries_of(disk.catalogue.*list), entries_of(memory.catalogue.*list));
    }
    ASSERT_GT(disk.catalogue.HK_Count(), 0);
    const Packet_Entry& first = disk.catalogue.HK_List[1];
    for (int k = 0; k < 40; ++k) {  // the same byte, or the same error (a ZEB item too large)
      // An error names the file it read: the same error but for that name.
      std::string from_disk = byte_or_error(disk, first, k);
      if (const size_t at = from_disk.find(path); at != std::string::npos) from_disk.replace(at, path.size(), "in memory");
      EXPECT_EQ(byte_or_error(memory, first, k), from_disk) << k;
    }
  }
}

}  // namespace
}  // namespace morvane
