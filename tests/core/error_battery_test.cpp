// SPDX-License-Identifier: MIT
// The battery of bad inputs: each failure is one run-time error whose message has the classic
// number and description and names what failed (the file, and where there is one the line,
// record and item). Inputs that are no regular file are the input files test's; failing disks
// the safe file test's.
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>

#include "core/configuration.h"
#include "core/conversion.h"
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
  // Writes a ZEB file of one record of `label` whose item holds text, and returns its path.
  std::string zeb_with_item(LabelCode label, int item, const std::string& text) const {
    std::string file = testing::zeb_text({testing::zeb_record(label, {{item, 424242}})});
    file.replace(file.find("424242"), 6, text);
    testing::write_file(dir.path("bad.zeb"), file);
    return dir.path("bad.zeb");
  }
  void load_zeb(LabelCode label, int item, const std::string& text) const {
    Session session;
    load_telemetry(session, zeb_with_item(label, item, text), FileFormat::ZEB);
  }

  testing::TempDir dir;
  std::string base;
};

TEST_F(ErrorBattery, EveryFailureNamesWhatFailed) {
  const std::string zeb = dir.path("bad.zeb"), ntype = config_file(kNTypeFile), sensors = config_file(kSensorsFile);
  // Each row makes its failure on a fresh configuration and says what the message must name.
  const struct {
    const char* failure;
    int number;
    const char* description;
    std::vector<std::string> names;
    std::function<void()> fail;
  } rows[] = {
      {"a ZEB item beyond 32 bits", 6, "Overflow", {zeb, "record 1", "item 20", "99999999999"},
       [&] { load_zeb(LabelCode::Complete, 20, "99999999999"); }},
      {"a ZEB packet item beyond 16 bits", 6, "Overflow", {zeb, "record 1", "item 10", "70000"},
       [&] {
         Session session;
         load_telemetry(session, zeb_with_item(LabelCode::Complete, 10, "70000"), FileFormat::ZEB);
         session.telemetry().zeb().packet_byte(1, 2);
       }},
      {"ZEB segmentation flags beyond 16 bits", 6, "Overflow", {zeb, "record 1", "item 6", "40000"},
       [&] { load_zeb(LabelCode::ScienceUnknown, 6, "40000"); }},
      {"an N-type table with a repeated x", 11, "Division by zero", {ntype, "lines 2 and 3", "same x"},
       [&] {
         testing::write_file(ntype, "0, 0\r\n1, 10\r\n1, 20\r\n2, 30\r\n");
         load_configuration(base);
       }},
      {"a pressure sensor whose two readings are equal", 11, "Division by zero",
       {config_file(kPressureFile), "line 3", "pressure sensor 2"},
       [&] {
         Configuration config = load_configuration(base);
         config.Pressure_Table[1].C2 = config.Pressure_Table[1].C1;
         double voltage = 1, value = 0;
         std::string unit;
         Convert_Sensor(config, 23, voltage, value, unit);
       }},
      {"a sensor table item that is no number", 13, "Type mismatch",
       {sensors + " line 3", "byte offset", "\"twelve\""},
       [&] {
         testing::write_file(sensors, "2\r\nHeater, 12, 1, 0, V\r\nValve, twelve, 1, 0, V\r\n");
         load_configuration(base);
       }},
  };
  for (const auto& row : rows) {
    fs::remove_all(dir.path("base"));
    SetUp();
    const testing::Thrown error = testing::thrown(row.fail);
    EXPECT_EQ(error.number, row.number) << row.failure << ": " << error.message;
    EXPECT_EQ(error.message.rfind(std::string(row.description) + ": ", 0), 0u) << row.failure << ": " << error.message;
    EXPECT_PRED2(testing::contains, error.message, "; Error number " + std::to_string(row.number)) << row.failure;
    for (const std::string& name : row.names) EXPECT_PRED2(testing::contains, error.message, name) << row.failure;
  }
}

}  // namespace
}  // namespace morvane
