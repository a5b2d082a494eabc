// SPDX-License-Identifier: MIT
#include "core/configuration.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "core/error.h"
#include "core/windows_path.h"
#include "sim/config_writer.h"
#include "test_files.h"

namespace morvane {
namespace {

using testing::TempDir;

// The message of the RuntimeError that f throws, or "" when it throws none.
template <typename F>
std::string failure_of(F&& f) {
  try {
    f();
  } catch (const RuntimeError& error) {
    return error.message();
  }
  return "";
}

TEST(Configuration, TheGeneratedBaseFolderLoads) {
  TempDir dir;
  const std::string base = sim::write_configuration(dir.path("base"));
  const Configuration config = load_configuration_from_pointer(dir.path("base"));
  EXPECT_EQ(config.Egse_Path, base);
  EXPECT_EQ(config.Sensor_Count(), 36);
  EXPECT_EQ(config.Pressure_Count(), 5);
  EXPECT_EQ(config.sensor(30).Channel_ID, 64);
  EXPECT_GT(config.NType.count(), 50);
}

TEST(Configuration, ItemsMayBeQuotedAndSeparatedByCommasOrLines) {
  TempDir dir;
  testing::write_file(dir.path("s.txt"), "2\r\n\"Name, with comma\", 22, 101, 6, \"oC\"\nPlain name,23,\n102,6,bar\n");
  const auto table = read_sensor_table(dir.path("s.txt"));
  ASSERT_EQ(table.size(), 2u);
  EXPECT_EQ(table[0].Sensor_Name, "Name, with comma");
  EXPECT_EQ(table[1].Sensor_Name, "Plain name");
  EXPECT_EQ(table[1].Channel_ID, 102);
  EXPECT_EQ(table[1].Sensor_Unit, "bar");
}

TEST(Configuration, FailuresNameTheFileTheLineAndWhatWasExpected) {
  TempDir dir;
  testing::write_file(dir.path("s.txt"), "2\n\"A\", 22, 1, 6, \"oC\"\n\"B\", twenty, 2, 6, \"oC\"\n");
  const std::string message = failure_of([&] { read_sensor_table(dir.path("s.txt")); });
  EXPECT_NE(message.find(dir.path("s.txt") + " line 3"), std::string::npos) << message;
  EXPECT_NE(message.find("byte offset"), std::string::npos) << message;
  EXPECT_NE(message.find("\"twenty\""), std::string::npos) << message;

  testing::write_file(dir.path("short.txt"), "3\n\"A\", 22, 1, 6, \"oC\"\n");
  EXPECT_NE(failure_of([&] { read_sensor_table(dir.path("short.txt")); }).find("Input past end of file"),
            std::string::npos);
  testing::write_file(dir.path("big.txt"), "1\n\"A\", 22, 40000, 6, \"oC\"\n");
  EXPECT_NE(failure_of([&] { read_sensor_table(dir.path("big.txt")); }).find("Overflow"), std::string::npos);
  EXPECT_NE(failure_of([&] { read_sensor_table(dir.path("none.txt")); }).find("File not found"), std::string::npos);
}

TEST(Configuration, TheNTypeTableHoldsAtMostOneHundredPoints) {
  TempDir dir;
  std::string text;
  for (int i = 0; i < 100; ++i) text += std::to_string(i * 100) + ", " + std::to_string(i * 2) + "\r\n";
  testing::write_file(dir.path("n.txt"), text + "\r\n");
  EXPECT_EQ(read_ntype_points(dir.path("n.txt")).size(), 100u);
  testing::write_file(dir.path("n.txt"), text + "10000, 200\r\n");
  const std::string message = failure_of([&] { read_ntype_points(dir.path("n.txt")); });
  EXPECT_NE(message.find("Subscript out of range"), std::string::npos) << message;
  EXPECT_NE(message.find("line 101"), std::string::npos) << message;
}

TEST(Configuration, APointerFileWithoutItsSecondLineIsReported) {
  TempDir dir;
  testing::write_file(dir.path("Morvane_Files.txt"), "only one line\r\n");
  const std::string message = failure_of([&] { load_configuration_from_pointer(dir.root()); });
  EXPECT_NE(message.find("Morvane_Files.txt line 2"), std::string::npos) << message;
}

TEST(Configuration, AnEmptySensorTableIsAllowed) {
  TempDir dir;
  testing::write_file(dir.path("s.txt"), "0\r\n");
  EXPECT_TRUE(read_sensor_table(dir.path("s.txt")).empty());
}

TEST(WindowsPath, ComponentsMatchWithoutRegardToCase) {
  TempDir dir;
  std::filesystem::create_directories(dir.path("Base/EGSE_Info/Test Ranges"));
  testing::write_file(dir.path("Base/EGSE_Info/Test Ranges/CSS EAFT Mode.txt"), "x");
  EXPECT_EQ(config_path(dir.path("Base"), "\\EGSE_info\\Test Ranges\\CSS EAFT Mode.txt"),
            dir.path("Base/EGSE_Info/Test Ranges/CSS EAFT Mode.txt"));
  EXPECT_EQ(config_path(dir.path("Base") + "\\", "\\egse_info\\missing.txt"), dir.path("Base/EGSE_Info/missing.txt"));
  const auto cwd = std::filesystem::current_path();
  std::filesystem::current_path(dir.root());
  EXPECT_EQ(resolve_windows_path("base\\egse_info"), dir.path("Base/EGSE_Info"));
  std::filesystem::current_path(cwd);
}

}  // namespace
}  // namespace morvane
