// SPDX-License-Identifier: MIT
// The battery of bad inputs and failing disks: each failure is one run-time error whose message
// has the classic number and description and names what failed (the file, and where there is
// one the line, record and item).
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <functional>

#include "child_process.h"
#include "core/configuration.h"
#include "core/conversion.h"
#include "core/safe_file.h"
#include "core/session.h"
#include "core/windows_path.h"
#include "sim/config_writer.h"
#include "test_files.h"
#include "thrown.h"

namespace morvane {
namespace {

namespace fs = std::filesystem;

class ErrorBattery : public ::testing::Test {
 protected:
  void SetUp() override { base = sim::write_configuration(dir.path("base")); }
  std::string config_file(const char* relative) const { return config_path(base, relative); }
  // A ZEB file of one housekeeping record whose item holds text.
  std::string zeb_with_item(int item, const std::string& text) const {
    std::string file = testing::zeb_text({testing::zeb_record(LabelCode::Complete, {{item, 424242}})});
    file.replace(file.find("424242"), 6, text);
    testing::write_file(dir.path("bad.zeb"), file);
    return dir.path("bad.zeb");
  }

  testing::TempDir dir;
  std::string base;
};

TEST_F(ErrorBattery, EveryFailureNamesWhatFailed) {
  // Each row makes its failure, says what the message must name and returns what was thrown.
  struct Row {
    const char* failure;
    int number;
    const char* description;
    std::function<testing::Thrown(std::vector<std::string>& names)> run;
  };
  const Row rows[] = {
      {"a ZEB item beyond 32 bits", 6, "Overflow",
       [&](std::vector<std::string>& names) {
         const std::string file = zeb_with_item(20, "99999999999");
         names = {file, "record 1", "item 20", "99999999999"};
         return testing::thrown([&] {
           Session session;
           load_telemetry(session, file, FileFormat::ZEB);
         });
       }},
      {"a ZEB packet item beyond 16 bits", 6, "Overflow",
       [&](std::vector<std::string>& names) {
         const std::string file = zeb_with_item(10, "70000");
         names = {file, "record 1", "item 10", "70000"};
         Session session;
         load_telemetry(session, file, FileFormat::ZEB);
         return testing::thrown([&] { session.telemetry().zeb().packet_byte(1, 2); });
       }},
      {"ZEB segmentation flags beyond 16 bits", 6, "Overflow",
       [&](std::vector<std::string>& names) {
         std::string text = testing::zeb_text({testing::zeb_record(LabelCode::ScienceUnknown, {{6, 40000}})});
         testing::write_file(dir.path("flags.zeb"), text);
         names = {dir.path("flags.zeb"), "record 1", "item 6", "40000"};
         return testing::thrown([&] {
           Session session;
           load_telemetry(session, dir.path("flags.zeb"), FileFormat::ZEB);
         });
       }},
      {"an N-type table with a repeated x", 11, "Division by zero",
       [&](std::vector<std::string>& names) {
         testing::write_file(config_file(kNTypeFile), "0, 0\r\n1, 10\r\n1, 20\r\n2, 30\r\n");
         names = {config_file(kNTypeFile), "lines 2 and 3", "same x"};
         return testing::thrown([&] { load_configuration(base); });
       }},
      {"a pressure sensor whose two readings are equal", 11, "Division by zero",
       [&](std::vector<std::string>& names) {
         names = {config_file(kPressureFile), "line 3", "pressure sensor 2"};
         Configuration config = load_configuration(base);
         config.Pressure_Table[1].C2 = config.Pressure_Table[1].C1;
         return testing::thrown([&] {
           double voltage = 1, value = 0;
           std::string unit;
           Convert_Sensor(config, 23, voltage, value, unit);
         });
       }},
      {"a sensor table item that is no number", 13, "Type mismatch",
       [&](std::vector<std::string>& names) {
         testing::write_file(config_file(kSensorsFile), "2\r\nHeater, 12, 1, 0, V\r\nValve, twelve, 1, 0, V\r\n");
         names = {config_file(kSensorsFile), "line 3", "byte offset", "twelve"};
         return testing::thrown([&] { load_configuration(base); });
       }},
      {"a configuration file that is a named pipe", 52, "Bad file name or number",
       [&](std::vector<std::string>& names) {
         fs::remove(config_file(kSensorsFile));
         ::mkfifo(config_file(kSensorsFile).c_str(), 0600);
         names = {config_file(kSensorsFile), "named pipe"};
         return testing::thrown([&] { load_configuration(base); });
       }},
      {"a configuration file of 17 MiB", 52, "Bad file name or number",
       [&](std::vector<std::string>& names) {
         fs::resize_file(config_file(kPressureFile), 17 * 1024 * 1024);
         names = {config_file(kPressureFile), "17825792 bytes", "16777216 bytes"};
         return testing::thrown([&] { load_configuration(base); });
       }},
      {"a loop of symbolic links", 76, "Path not found",
       [&](std::vector<std::string>& names) {
         fs::remove(config_file(kSensorsFile));
         fs::create_symlink("Sensors.txt", config_file(kSensorsFile));
         names = {config_file(kSensorsFile), "symbolic links"};
         return testing::thrown([&] { load_configuration(base); });
       }},
      {"a missing telemetry file", 53, "File not found",
       [&](std::vector<std::string>& names) {
         names = {dir.path("missing.qm")};
         return testing::thrown([&] {
           Session session;
           load_telemetry(session, dir.path("missing.qm"), FileFormat::QM);
         });
       }},
      {"a full disk under a rewrite", 61, "Disk full",
       [&](std::vector<std::string>& names) {
         const std::string path = config_file(kPressureFile);
         names = {path, "disk full", "in the folder", "is left as it was"};
         return testing::thrown([&] {
           replace_file(path, "5\r\n", [](int, const void*, size_t) -> ssize_t {
             errno = ENOSPC;
             return -1;
           });
         });
       }},
  };
  for (const Row& row : rows) {
    fs::remove_all(dir.path("base"));  // a fresh configuration for each failure
    SetUp();
    std::vector<std::string> names;
    const testing::Thrown error = row.run(names);
    EXPECT_EQ(error.number, row.number) << row.failure << ": " << error.message;
    EXPECT_EQ(error.message.rfind(std::string(row.description) + ": ", 0), 0u) << row.failure << ": " << error.message;
    EXPECT_PRED2(testing::contains, error.message, "; Error number " + std::to_string(row.number)) << row.failure;
    for (const std::string& name : names) EXPECT_PRED2(testing::contains, error.message, name) << row.failure;
  }
}

TEST_F(ErrorBattery, APermissionProblemIsPermissionDeniedNotFileNotFound) {
  const std::string sensors = config_file(kSensorsFile);
  ::chmod(sensors.c_str(), 0);
  const testing::ChildEnd end = testing::in_child([&] {
    if (!testing::become_unprivileged()) ::_exit(3);
    load_configuration(base);
  });
  if (end.exit_status == 3) GTEST_SKIP() << "cannot give up the superuser's rights here";
  EXPECT_EQ(end.exit_status, 1);
  EXPECT_PRED2(testing::contains, end.error, "Permission denied: " + sensors);
  EXPECT_PRED2(testing::contains, end.error, "; Error number 70");
}

}  // namespace
}  // namespace morvane
