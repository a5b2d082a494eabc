// SPDX-License-Identifier: MIT
#include "export/housekeeping_export.h"

#include "core/conversion.h"
#include "core/number_text.h"
#include "export_fixture.h"
#include "sim/telemetry_writer.h"
#include "thrown.h"
#include "views/hk_sensors.h"

namespace morvane {
namespace {

using testing::hk_packet;
using testing::sensor_bytes;

// Columns: Reactor 1, Reactor 2 (thermocouples), Pressure 1, AD590 Temp (the board), Docking
// Stn, +28V Rail (negative only above 210).
const std::vector<int> kColumns = {1, 2, 22, 28, 29, 33};

std::vector<bool> ticked(const std::vector<int>& sensors) {
  std::vector<bool> mask(36, false);
  for (int s : sensors) mask[static_cast<size_t>(s - 1)] = true;
  return mask;
}

class HousekeepingExport : public testing::ExportTest {
 protected:
  void SetUp() override {
    ExportTest::SetUp();
    // A board byte of 0 is -273 C, below the N-type table: a cold-junction term of -6600 uV,
    // which pushes any thermocouple reading below the table too (-280).
    load({hk_packet(2, sensor_bytes({{1, 0x80}, {2, 0}, {22, 0x20}, {28, 0}, {29, 70}, {33, 211}}), {}, 1, 1000),
          hk_packet(1, sensor_bytes({{1, 0}, {2, 0}, {22, 0x10}, {28, 0}, {29, 0}, {33, 210}}), {}, 2, 1001),
          hk_packet(2, sensor_bytes({{1, 7}}), {}, 3, 1002)});
  }
  std::string exported(HK_Format format, Entry_Range range = {1, 2}, std::vector<bool> sensors = ticked(kColumns),
                       char delimiter = '\t') {
    return written([&](Line_Sink& out) { write_housekeeping(session, {range, format, sensors}, out); }, delimiter);
  }
};

constexpr const char* kHeadings =
    "HK number\tLander time\tReactor 1\tReactor 2\tPressure 1\tAD590 Temp\tDocking Stn\t+28V Rail\t\r\n"
    "     \tseconds\toC\toC\tbar\toC\tmm\tV\t\r\n"
    "\r\n";

TEST_F(HousekeepingExport, WritesEachFormatsLinesInEveryDelimiter) {
  struct Case {
    HK_Format format;
    std::string expected;
  };
  const Case cases[] = {
      {HK_Format::Raw, std::string("Housekeeping - Raw data\r\n") + kHeadings +
                           "1\t1000\t128\t0\t32\t0\t70\t211\t\r\n"
                           "2\t1001\t0\t0\t16\t0\t0\t210\t\r\n"},
      {HK_Format::Calibrated, std::string("Housekeeping - Calibrated Data (no AD590 correction)\r\n") + kHeadings +
                                  "1\t1000\t-280\t0\t0.5\t-273\t14.21875\t-17.578125\t\r\n"
                                  "2\t1001\t0\t0\t0.1875\t-273\t0\t82.03125\t\r\n"},
      {HK_Format::Calibrated_AD590,
       std::string("Housekeeping - Calibrated Data (with AD590 correction)\r\n") + kHeadings +
           "1\t1000\t-280\t-280\t0.5\t-273\t14.21875\t-17.578125\t\r\n"
           "2\t1001\t-280\t-280\t0.1875\t-273\t0\t82.03125\t\r\n"},
  };
  for (const Case& c : cases) {
    for (const char delimiter : {'\t', ',', ';'}) {
      SCOPED_TRACE(std::string(hk_export_title(c.format)) + ", delimiter " + std::to_string(int{delimiter}));
      EXPECT_EQ(exported(c.format, {1, 2}, ticked(kColumns), delimiter),
                testing::with_delimiter(c.expected, delimiter));
    }
  }
}

TEST_F(HousekeepingExport, WithNoSensorTickedARowIsTheNumberAndTheTime) {
  EXPECT_EQ(exported(HK_Format::Calibrated, {2, 3}, {}, ';'),
            "Housekeeping - Calibrated Data (no AD590 correction)\r\n"
            "HK number;Lander time;\r\n"
            "     ;seconds;\r\n"
            "\r\n"
            "2;1001;\r\n"
            "3;1002;\r\n");
}

TEST_F(HousekeepingExport, ARangeOfOnePacketWritesOneRow) {
  const std::string text = exported(HK_Format::Raw, {3, 3}, ticked({1}));
  EXPECT_EQ(text.substr(text.rfind("\r\n\r\n") + 4), "3\t1002\t7\t\r\n");
}

// The calibrated columns are the housekeeping view's values, packet by packet, whatever the
// board temperature does between packets: checked against the view over a day of the simulated
// instrument.
TEST_F(HousekeepingExport, CalibratedColumnsAreTheViewsValues) {
  sim::Telemetry_Options options;
  options.frames = 400;
  sim::write_telemetry(dir.path("sim.css"), options);
  load_telemetry(session, dir.path("sim.css"), FileFormat::CSS);
  const int32_t count = session.catalogue.HK_Count();
  ASSERT_GT(count, 100);

  for (const HK_Format format : {HK_Format::Calibrated, HK_Format::Calibrated_AD590}) {
    const std::string text = written([&](Line_Sink& out) {
      write_housekeeping(session, {{1, count}, format, std::vector<bool>(36, true)}, out);
    });
    size_t at = text.find("\r\n\r\n") + 4;
    for (int32_t k = 1; k <= count; ++k) {
      std::string expected =
          std::to_string(k) + "\t" + std::to_string(session.catalogue.HK_List[k].Lander_Time) + "\t";
      decode_hk_sensors(session, k);  // the view's values, thermocouples corrected
      for (int s = 1; s <= 36; ++s) {
        double value = session.config.sensor(s).Value;
        if (format == HK_Format::Calibrated && is_thermocouple(s)) {
          double voltage = hk_voltage(hk_signed_reading(s, session.HK_Sensor_Data.at(s, k)),
                                      session.config.sensor(s).Scale_Exponent);
          std::string unit;
          Convert_Sensor(session.config, s, voltage, value, unit);
        }
        expected += general_text(value) + "\t";
      }
      const size_t end = text.find("\r\n", at);
      ASSERT_EQ(text.substr(at, end - at), expected) << "packet " << k;
      at = end + 2;
    }
    EXPECT_EQ(at, text.size());
  }
}

TEST_F(HousekeepingExport, TheRecordsHoldTheLastExportedPacket) {
  exported(HK_Format::Calibrated, {1, 2}, ticked({29, 33}));
  const Sensor_Record& docking = session.config.sensor(29);
  EXPECT_EQ(docking.Raw_Reading, 0);
  EXPECT_EQ(docking.Value, 0);
  EXPECT_EQ(session.config.sensor(33).Raw_Reading, 210);
  EXPECT_EQ(session.config.sensor(33).Value, 82.03125);
}

TEST_F(HousekeepingExport, AFailingConversionEndsTheExportAfterTheHeadings) {
  session.config.Pressure_Table[0].C2 = session.config.Pressure_Table[0].C1;  // division by zero
  const auto output = open_export_output(dir.path("out.txt"), Export_File_Type::Delimited_Text, '\t', "Sheet");
  EXPECT_EQ(
      testing::thrown([&] { write_housekeeping(session, {{1, 2}, HK_Format::Calibrated, ticked({29, 22})}, *output); })
          .number,
      11);
  output->keep_partial();
  EXPECT_EQ(testing::read_file(dir.path("out.txt")),
            "Housekeeping - Calibrated Data (no AD590 correction)\r\n"
            "HK number\tLander time\tPressure 1\tDocking Stn\t\r\n"
            "     \tseconds\tbar\tmm\t\r\n"
            "\r\n");
}

TEST_F(HousekeepingExport, AWorkbookHoldsTheSameCells) {
  for (const HK_Format format : {HK_Format::Raw, HK_Format::Calibrated, HK_Format::Calibrated_AD590}) {
    const std::string text = exported(format, {1, 3});
    written([&](Line_Sink& out) { write_housekeeping(session, {{1, 3}, format, ticked(kColumns)}, out); }, '\t',
            "out.xlsx");
    const testing::Sheet sheet = testing::read_sheet(dir.path("out.xlsx"));
    testing::expect_same_cells(text, '\t', sheet);
    ASSERT_GE(sheet.size(), 5u);
    EXPECT_EQ(sheet[2][0].text, "     ");  // the five blanks survive
    EXPECT_EQ(sheet[4][1].kind, testing::Sheet_Cell::Number);
  }
}

}  // namespace
}  // namespace morvane
