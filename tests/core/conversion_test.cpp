// SPDX-License-Identifier: MIT
#include "core/conversion.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "sim/config_writer.h"
#include "test_files.h"
#include "thrown.h"

namespace morvane {
namespace {

class ConversionTest : public ::testing::Test {
 protected:
  void SetUp() override { config = load_configuration(sim::write_configuration(dir.path("base"))); }
  std::pair<double, std::string> convert(int s, double voltage) {
    double value = -1;
    std::string unit = "previous";
    Convert_Sensor(config, s, voltage, value, unit);
    return {value, unit};
  }
  testing::TempDir dir;
  Configuration config;
};

TEST_F(ConversionTest, FixedFactorChannels) {
  struct Case {
    int sensor;
    double voltage, value;
    const char* unit;
  };
  const Case cases[] = {{28, 2.98, 25, "oC"}, {29, 1, 5.2, "mm"},   {30, 0.5, 50, "uA"}, {31, 3, 3, "kV"},
                        {32, 2.5, 5, "V"},    {33, 2.8, 28, "V"},   {34, 0.15, 150, "mA"}, {35, 0.1, 100, "mA"},
                        {36, 5, 500, "V"},    {0, 1, 0, "previous"}, {37, 1, 0, "previous"}};
  for (const auto& c : cases) {
    const auto [value, unit] = convert(c.sensor, c.voltage);
    EXPECT_NEAR(value, c.value, 1e-9) << c.sensor;
    EXPECT_EQ(unit, c.unit) << c.sensor;
  }
}

TEST_F(ConversionTest, PressureChannelsOverwriteTheCallersVoltage) {
  double voltage = 4.5, value = 0;
  std::string unit;
  Convert_Sensor(config, 22, voltage, value, unit);
  EXPECT_DOUBLE_EQ(voltage, 40);  // 4.5 x 10 - 5
  EXPECT_DOUBLE_EQ(value, 1.0);   // 40 / (45 - 5)
  EXPECT_EQ(unit, "bar");
  Convert_Sensor(config, 22, voltage, value, unit);  // the second call sees the changed voltage
  EXPECT_DOUBLE_EQ(value, (400 - 5) / 40.0);
  voltage = 2.5;
  Convert_Sensor(config, 26, voltage, value, unit);
  EXPECT_DOUBLE_EQ(value, 20 * 1000 / 40.0);
  EXPECT_EQ(unit, "mbar");
}

// Equal readings (division by zero) are the error battery's.
TEST_F(ConversionTest, APressureChannelWithoutItsRecordIsOutOfRange) {
  double voltage = 1, value = 0;
  std::string unit;
  config.Pressure_Table.resize(4);
  EXPECT_EQ(testing::thrown([&] { Convert_Sensor(config, 26, voltage, value, unit); }).number, 9);
}

TEST_F(ConversionTest, LookupsGiveTheirLimitsOutsideTheTable) {
  const NTypeTable& t = config.NType;
  EXPECT_EQ(t.NType_Lookup(t.x(1) - 1), -280);
  EXPECT_EQ(t.NType_Lookup(t.x(t.count()) + 1), 2000);
  EXPECT_EQ(t.NType_Lookup(t.x(t.count())), 2000);  // the last point finds no segment
  EXPECT_EQ(t.NType_Reverse_Lookup(t.y(1) - 1), -6600);
  EXPECT_EQ(t.NType_Reverse_Lookup(t.y(t.count()) + 1), 50000);
  EXPECT_EQ(t.NType_Reverse_Lookup(t.y(t.count())), 50000);
  EXPECT_NEAR(t.NType_Lookup(0), 0, 1e-9);
  EXPECT_NEAR(t.NType_Reverse_Lookup(0), 0, 1e-9);
  double voltage = 1e-5, value = 0;  // a thermocouple channel feeds voltage x 10000 to the lookup
  std::string unit;
  Convert_Sensor(config, 27, voltage, value, unit);
  EXPECT_NEAR(value, t.NType_Lookup(0.1), 1e-12);
  EXPECT_EQ(unit, "oC");
}

TEST_F(ConversionTest, LookupsFollowThePublishedTypeNTable) {
  std::ifstream in(testing::source_path("tests/data/type-n-thermocouple-its90.csv"));
  ASSERT_TRUE(in);
  std::string line;
  int checked = 0;
  while (std::getline(in, line)) {
    if (line.empty() || line[0] == '#' || line[0] == 't') continue;
    std::istringstream fields(line);
    double celsius = 0, microvolts = 0;
    char comma = 0;
    fields >> celsius >> comma >> microvolts;
    if (celsius < -200 || celsius >= 1300) continue;  // the instrument's range, inside the table
    EXPECT_NEAR(config.NType.NType_Lookup(microvolts), celsius, 0.15) << celsius;
    EXPECT_NEAR(config.NType.NType_Reverse_Lookup(celsius), microvolts, 3) << celsius;
    ++checked;
  }
  EXPECT_EQ(checked, 1500);
}

}  // namespace
}  // namespace morvane
