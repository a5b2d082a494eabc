// SPDX-License-Identifier: MIT
// The two calibration dialogs: the pressure sensors' readings and the AD590 temperature.
#include "calibration/ad590_setting.h"
#include "calibration/pressure_calibration.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <string>
#include <vector>

#include "core/error.h"
#include "sim/config_writer.h"
#include "test_files.h"
#include "thrown.h"

namespace morvane {
namespace {

// The dialog pads values by their size; the file writes numbers as the configuration reads them.
TEST(PressureCalibration, ValuesArePaddedForTheDialogAndWrittenForTheConfiguration) {
  const std::pair<double, const char*> cases[] = {
      {0.5, "      0.5000"}, {-0.5, "     -0.5000"}, {-123.4, " -123.4000"}, {1234.5, "1234.5000"}, {99999, "99999.0000"}};
  for (const auto& [value, text] : cases) EXPECT_EQ(padded_display(value), text) << value;
  EXPECT_EQ(pressure_file_text({{22, 1234.5, 56.25}, {23, -3, -0.5}}), " 2\r\n22, 1234.5,  56.25\r\n23, -3, -0.5\r\n");
  EXPECT_EQ(pressure_file_text({}), " 0\r\n");
}

class CalibrationTest : public ::testing::Test {
 protected:
  void SetUp() override {
    base = sim::write_configuration(dir.path("base"));
    config = load_configuration(base);
    saved = testing::read_file(pressure_file());
  }
  std::string pressure_file() const { return base + "/EGSE_info/Pressure Sensors.txt"; }
  std::string default_file() const { return base + "/EGSE_info/Default_Pressure Sensors.txt"; }
  testing::TempDir dir;
  std::string base;
  Configuration config;
  std::string saved;
};

TEST_F(CalibrationTest, AcceptWithoutModifyWritesNothingAndAsksNothing) {
  const std::string unlike_the_editors = "5\n22,1,2\n23,1,2\n24,1,2\n25,1,2\n26,1,2\n";
  testing::write_file(pressure_file(), unlike_the_editors);
  Calibration editor(config);
  editor.Command1_Click();
  EXPECT_EQ(std::tuple(editor.closed(), editor.question()), std::tuple(true, Calibration::Question::None));
  EXPECT_EQ(testing::read_file(pressure_file()), unlike_the_editors);
}

TEST_F(CalibrationTest, ModifiedEntriesAreWrittenAndNonNumericOnesIgnored) {
  Calibration editor(config);
  editor.Command3_Click();
  ASSERT_EQ(editor.question(), Calibration::Question::Modify);
  EXPECT_STREQ(editor.question_text(),
               "Warning - modifying the pressure sensor calibration will alter the display of the pressure sensor values");
  EXPECT_FALSE(editor.question_is_yes_no());
  editor.answer(true);
  EXPECT_EQ(std::tuple(editor.entries_enabled(), editor.Calibration_Modified()), std::tuple(true, true));

  editor.set_atmosphere_text(0, "abc");
  editor.set_vacuum_text(0, "  7.5 ");
  editor.set_atmosphere_text(4, "1234.5");
  editor.Command1_Click();
  ASSERT_EQ(editor.question(), Calibration::Question::Accept);
  EXPECT_STREQ(editor.question_text(), "Are you sure that you want to change the pressure sensor calibration values");
  EXPECT_TRUE(editor.question_is_yes_no());
  editor.answer(true);
  // abc left C1 as it was.
  EXPECT_EQ(std::tuple(editor.closed(), config.pressure(1).C1, config.pressure(1).C2), std::tuple(true, 45, 7.5));
  EXPECT_EQ(testing::read_file(pressure_file()),
            " 5\r\n22, 45,  7.5\r\n23, 45,  5\r\n24, 45,  5\r\n25, 45,  5\r\n26, 1234.5,  5\r\n");
  EXPECT_EQ(read_pressure_table(pressure_file()).size(), 5u);  // the configuration reads it back
}

TEST_F(CalibrationTest, ResetThenCancelRestoresTheSavedValues) {
  testing::write_file(default_file(), "5\r\n22, 50, 10\r\n23, 51, 11\r\n24, 52, 12\r\n25, 53, 13\r\n26, 54, 14\r\n");
  Calibration editor(config);
  editor.Command4_Click();
  ASSERT_EQ(editor.question(), Calibration::Question::Reset);
  EXPECT_STREQ(editor.question_text(), kModifyWarning);
  editor.answer(true);
  // Reset alone does not open the entries.
  EXPECT_EQ(std::tuple(editor.entries_enabled(), editor.Calibration_Modified()), std::tuple(false, true));
  EXPECT_EQ(std::tuple(config.pressure(2).C1, editor.rows()[1].atmosphere_text), std::tuple(51, "    51.0000"));
  EXPECT_EQ(testing::read_file(pressure_file()), saved);  // held in memory until Accept

  editor.Command2_Click();
  EXPECT_EQ(std::tuple(editor.closed(), config.pressure(2).C1, config.pressure(2).C2), std::tuple(true, 45, 5));
  EXPECT_EQ(testing::read_file(pressure_file()), saved);
}

TEST_F(CalibrationTest, AShorterDefaultTableChangesWhatAcceptWrites) {
  testing::write_file(default_file(), "3\r\n22, 50, 10\r\n23, 51, 11\r\n24, 52, 12\r\n");
  Calibration editor(config);
  editor.Command4_Click();
  editor.answer(true);
  ASSERT_EQ(editor.rows().size(), 5u);  // the rows built at opening stay
  EXPECT_EQ(std::tuple(editor.rows()[3].has_record, editor.rows()[3].atmosphere_text), std::tuple(false, ""));
  editor.Command1_Click();
  editor.answer(true);
  EXPECT_EQ(testing::read_file(pressure_file()), " 3\r\n22, 50,  10\r\n23, 51,  11\r\n24, 52,  12\r\n");
}

TEST_F(CalibrationTest, AFullDiskLeavesTheOldFileIntactAndKeepsTheWholeLinesWrittenBesideIt) {
  // The disk fills up after the first few bytes.
  int calls = 0;
  Calibration editor(config, [&calls](int fd, const void* data, size_t size) -> ssize_t {
    if (calls++ == 0) return ::write(fd, data, std::min<size_t>(size, 8));
    errno = ENOSPC;
    return -1;
  });
  editor.Command3_Click();
  editor.answer(true);
  editor.set_atmosphere_text(0, "60");
  editor.Command1_Click();
  const testing::Thrown full = testing::thrown([&] { editor.answer(true); });  // the message is the safe file's
  EXPECT_EQ(full.number, 61);
  EXPECT_PRED2(testing::contains, full.message, "Pressure Sensors.txt: cannot write the new file after 8 bytes");
  EXPECT_EQ(testing::read_file(pressure_file()), saved);
  EXPECT_EQ(testing::read_file(partial_path(pressure_file())), " 5\r\n");  // the count, the one whole line
  EXPECT_FALSE(editor.closed());  // the dialog stays open: Cancel or another Accept
}

TEST_F(CalibrationTest, ARecordOfAnUnknownSensorCannotBeShown) {
  config.Pressure_Table[0].Sensor_Number = 99;
  EXPECT_THROW(Calibration editor(config), RuntimeError);
}

using AD590Test = CalibrationTest;


TEST_F(AD590Test, AcceptStoresTheThermocoupleVoltageOfTheTemperature) {
  EXPECT_TRUE(AD590_Cal(config).Command1_Click(config, "25"));
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
