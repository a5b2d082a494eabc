// SPDX-License-Identifier: MIT
// A telemetry file held in memory (the fuzzers' input) reads and catalogues exactly as the same
// bytes on disk, the frames past the end of an FM file included.
#include <gtest/gtest.h>

#include <memory>

#include "core/error.h"
#include "core/session.h"
#include "sim/telemetry_writer.h"
#include "test_files.h"

namespace morvane {
namespace {

using testing::TempDir;

std::vector<uint8_t> bytes_of(const std::string& path) {
  const std::string text = testing::read_file(path);
  return {text.begin(), text.end()};
}

std::string byte_or_error(const Session& session, const Packet_Entry& entry, int k) {
  try {
    return std::to_string(session.telemetry().packet_byte(entry, k, true));
  } catch (const RuntimeError& error) {
    return error.message();
  }
}

void expect_same_list(const EntryList& disk, const EntryList& memory) {
  ASSERT_EQ(disk.size(), memory.size());
  for (int32_t i = 1; i <= disk.size(); ++i) {
    EXPECT_EQ(disk[i].Packet_Position, memory[i].Packet_Position) << i;
    EXPECT_EQ(disk[i].Sequence_Count, memory[i].Sequence_Count) << i;
    EXPECT_EQ(disk[i].Lander_Time, memory[i].Lander_Time) << i;
    EXPECT_EQ(disk[i].Label, memory[i].Label) << i;
  }
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
    load_telemetry(memory, std::make_shared<TelemetryFile>("in memory", bytes_of(path), format));
    EXPECT_EQ(memory.File_Name, "in memory");
    EXPECT_EQ(memory.File_Type, format);
    EXPECT_EQ(memory.Packet_Count, disk.Packet_Count);
    expect_same_list(disk.catalogue.HK_List, memory.catalogue.HK_List);
    expect_same_list(disk.catalogue.Science_List, memory.catalogue.Science_List);
    expect_same_list(disk.catalogue.Information_List, memory.catalogue.Information_List);
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
