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
  // Sensor, voltage, value, unit.
  const std::tuple<int, double, double, const char*> cases[] = {
      {28, 2.98, 25, "oC"}, {29, 1, 5.2, "mm"},   {30, 0.5, 50, "uA"},   {31, 3, 3, "kV"},        {32, 2.5, 5, "V"},
      {33, 2.8, 28, "V"},   {34, 0.15, 150, "mA"}, {35, 0.1, 100, "mA"}, {36, 5, 500, "V"},       {0, 1, 0, "previous"},
      {37, 1, 0, "previous"}};
  for (const auto& [sensor, voltage, value, unit] : cases) {
    const auto [converted, converted_unit] = convert(sensor, voltage);
    EXPECT_NEAR(converted, value, 1e-9) << sensor;
    EXPECT_EQ(converted_unit, unit) << sensor;
  }
}

TEST_F(ConversionTest, PressureChannelsOverwriteTheCallersVoltage) {
  double voltage = 4.5, value = 0;
  std::string unit;
  Convert_Sensor(config, 22, voltage, value, unit);
  // 4.5 x 10 - 5 and 40 / (45 - 5): the values here are exact in binary.
  EXPECT_EQ(std::tuple(voltage, value, unit), std::tuple(40.0, 1.0, "bar"));
  Convert_Sensor(config, 22, voltage, value, unit);  // the second call sees the changed voltage
  EXPECT_DOUBLE_EQ(value, (400 - 5) / 40.0);
  voltage = 2.5;
  Convert_Sensor(config, 26, voltage, value, unit);
  EXPECT_EQ(std::tuple(value, unit), std::tuple(20 * 1000 / 40.0, "mbar"));

}

// Equal readings (division by zero) are the error battery's.
TEST_F(ConversionTest, APressureChannelWithoutItsRecordIsOutOfRange) {
  config.Pressure_Table.resize(4);
  EXPECT_EQ(testing::thrown([&] { convert(26, 1); }).number, 9);
}

TEST_F(ConversionTest, LookupsGiveTheirLimitsOutsideTheTable) {
  const NTypeTable& t = config.NType;
  const int32_t last = t.count();  // the last point finds no segment
  EXPECT_EQ((std::vector{t.NType_Lookup(t.x(1) - 1), t.NType_Lookup(t.x(last) + 1), t.NType_Lookup(t.x(last))}),
            (std::vector<double>{-280, 2000, 2000}));
  EXPECT_EQ((std::vector{t.NType_Reverse_Lookup(t.y(1) - 1), t.NType_Reverse_Lookup(t.y(last) + 1),
                         t.NType_Reverse_Lookup(t.y(last))}),
            (std::vector<double>{-6600, 50000, 50000}));
  EXPECT_NEAR(t.NType_Lookup(0), 0, 1e-9);
  EXPECT_NEAR(t.NType_Reverse_Lookup(0), 0, 1e-9);
  // A thermocouple channel feeds voltage x 10000 to the lookup.
  const auto [value, unit] = convert(27, 1e-5);
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
    double celsius = 0, microvolts = 0;
    char comma = 0;
    std::istringstream(line) >> celsius >> comma >> microvolts;
    if (celsius < -200 || celsius >= 1300) continue;  // the instrument's range, inside the table
    EXPECT_NEAR(config.NType.NType_Lookup(microvolts), celsius, 0.15) << celsius;
    EXPECT_NEAR(config.NType.NType_Reverse_Lookup(celsius), microvolts, 3) << celsius;
    ++checked;
  }
  EXPECT_EQ(checked, 1500);
}

}  // namespace
}  // namespace morvane
