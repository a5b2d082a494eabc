// SPDX-License-Identifier: MIT
#include "core/configuration.h"
#include "core/sensor_id.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>

#include "core/windows_path.h"
#include "sim/config_writer.h"
#include "test_files.h"
#include "thrown.h"

namespace morvane {
namespace {

using testing::TempDir;

std::string failure_of(const std::function<void()>& call) { return testing::thrown(call).message; }

TEST(Configuration, TheBaseFolderIsFoundThroughThePointerFile) {
  TempDir dir;
  const std::string base = sim::write_configuration(dir.path("base"));
  const Configuration config = load_configuration_from_pointer(dir.path("base"));
  EXPECT_EQ(std::tuple(config.Egse_Path, config.Sensor_Count(), config.Pressure_Count()), std::tuple(base, 36, 5));

  testing::write_file(dir.path("Morvane_Files.txt"), "only one line\r\n");
  EXPECT_PRED2(testing::contains, failure_of([&] { load_configuration_from_pointer(dir.root()); }),
               "Morvane_Files.txt line 2");
}

TEST(Configuration, ItemsMayBeQuotedAndSeparatedByCommasOrLines) {
  TempDir dir;
  testing::write_file(dir.path("s.txt"), "2\r\n\"Name, with comma\", 22, 101, 6, \"oC\"\nPlain name,23,\n102,6,bar\n");
  const auto table = read_sensor_table(dir.path("s.txt"));
  ASSERT_EQ(table.size(), 2u);
  EXPECT_EQ(table[0].Sensor_Name, "Name, with comma");
  const SensorRecord& plain = table[1];
  EXPECT_EQ(std::tie(plain.Sensor_Name, plain.Channel_ID, plain.Sensor_Unit), std::tuple("Plain name", 102, "bar"));
  testing::write_file(dir.path("empty.txt"), "0\r\n");
  EXPECT_TRUE(read_sensor_table(dir.path("empty.txt")).empty());
}

// An item that is no number is the error battery's.
TEST(Configuration, AShortTableALargeNumberAndAMissingFileAreRunTimeErrors) {
  TempDir dir;
  testing::write_file(dir.path("short.txt"), "3\n\"A\", 22, 1, 6, \"oC\"\n");
  testing::write_file(dir.path("big.txt"), "1\n\"A\", 22, 40000, 6, \"oC\"\n");
  const std::pair<const char*, const char*> cases[] = {
      {"short.txt", "Input past end of file"}, {"big.txt", "Overflow"}, {"none.txt", "File not found"}};
  for (const auto& [name, description] : cases) {
    EXPECT_PRED2(testing::contains, failure_of([&] { read_sensor_table(dir.path(name)); }), description) << name;
  }
}

TEST(Configuration, TheNTypeTableHoldsAtMostOneHundredPoints) {
  TempDir dir;
  std::string text;
  for (int i = 0; i < 100; ++i) text += std::to_string(i * 100) + ", " + std::to_string(i * 2) + "\r\n";
  testing::write_file(dir.path("n.txt"), text + "\r\n");
  EXPECT_EQ(read_ntype_points(dir.path("n.txt")).size(), 100u);
  testing::write_file(dir.path("n.txt"), text + "10000, 200\r\n");
  const std::string message = failure_of([&] { read_ntype_points(dir.path("n.txt")); });
  EXPECT_PRED2(testing::contains, message, "Subscript out of range");
  EXPECT_PRED2(testing::contains, message, "line 101");
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

Configuration sensors_with_ids(std::initializer_list<int16_t> ids) {
  Configuration config;
  for (int16_t id : ids) config.Sensor_Table.push_back(SensorRecord{"s", 0, id, 0, "", 0, 0, 0, 0, 0});
  return config;
}

TEST(SensorId, TheLastMatchingSensorWinsAndAnIdOfNoSensorGivesZero) {
  const Configuration config = sensors_with_ids({10, 20, 10, -1});
  // Words are never negative: 65535 is no sensor's.
  const std::pair<int32_t, int> cases[] = {{10, 3}, {20, 2}, {11, 0}, {65535, 0}, {-1, 4}};
  for (const auto& [id, row] : cases) EXPECT_EQ(Get_Sensor_ID(config, id), row) << id;
}

}  // namespace
}  // namespace morvane
