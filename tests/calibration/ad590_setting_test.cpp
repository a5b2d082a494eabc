// SPDX-License-Identifier: MIT
#include "calibration/ad590_setting.h"

#include <gtest/gtest.h>

#include "sim/config_writer.h"
#include "test_files.h"

namespace morvane {
namespace {

class AD590Test : public ::testing::Test {
 protected:
  void SetUp() override { config = load_configuration(sim::write_configuration(dir.path("base"))); }
  testing::TempDir dir;
  Configuration config;
};

TEST_F(AD590Test, AcceptStoresTheThermocoupleVoltageOfTheTemperature) {
  AD590_Cal dialog(config);
  EXPECT_TRUE(dialog.Command1_Click(config, "25"));
  EXPECT_DOUBLE_EQ(config.AD590_EMF, config.NType.NType_Reverse_Lookup(25));
  EXPECT_NEAR(config.AD590_EMF, 525.184 * 25 / 20, 15);  // about 656 microvolts
  EXPECT_EQ(AD590_Cal(config).text(), "25.00");         // reopened: computed back from the voltage
  EXPECT_TRUE(AD590_Cal(config).Command1_Click(config, " -40.5 "));
  EXPECT_NEAR(AD590_Cal(config).temperature(), -40.5, 0.02);  // the two lookups agree only to their interpolation
}

TEST_F(AD590Test, NonNumericEntriesAreIgnored) {
  AD590_Cal(config).Command1_Click(config, "25");
  const double before = config.AD590_EMF;
  for (const char* text : {"abc", "", "25 C", "1,5"}) {
    EXPECT_FALSE(AD590_Cal(config).Command1_Click(config, text)) << text;
    EXPECT_EQ(config.AD590_EMF, before) << text;
  }
}

}  // namespace
}  // namespace morvane
