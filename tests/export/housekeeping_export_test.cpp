// SPDX-License-Identifier: MIT
#include "export/housekeeping_export.h"

#include "core/conversion.h"
#include "core/number_text.h"
#include "export_fixture.h"
#include "decoders/hk_sensors.h"

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
  std::string exported(HKFormat format, EntryRange range = {1, 2}, std::vector<bool> sensors = ticked(kColumns),
                       char delimiter = '\t') {
    return written([&](LineSink& out) { write_housekeeping(session, {range, format, sensors}, out); }, delimiter);
  }
};

constexpr const char* kHeadings =
    "HK number\tLander time\tReactor 1\tReactor 2\tPressure 1\tAD590 Temp\tDocking Stn\t+28V Rail\t\r\n"
    "     \tseconds\toC\toC\tbar\toC\tmm\tV\t\r\n"
    "\r\n";

TEST_F(HousekeepingExport, WritesEachFormatsLines) {
  const std::pair<HKFormat, std::string> cases[] = {
      {HKFormat::Raw, std::string("Housekeeping - Raw data\r\n") + kHeadings +
                           "1\t1000\t128\t0\t32\t0\t70\t211\t\r\n"
                           "2\t1001\t0\t0\t16\t0\t0\t210\t\r\n"},
      {HKFormat::Calibrated, std::string("Housekeeping - Calibrated Data (no AD590 correction)\r\n") + kHeadings +
                                  "1\t1000\t-280\t0\t0.5\t-273\t14.21875\t-17.578125\t\r\n"
                                  "2\t1001\t0\t0\t0.1875\t-273\t0\t82.03125\t\r\n"},
      {HKFormat::Calibrated_AD590,
       std::string("Housekeeping - Calibrated Data (with AD590 correction)\r\n") + kHeadings +
           "1\t1000\t-280\t-280\t0.5\t-273\t14.21875\t-17.578125\t\r\n"
           "2\t1001\t-280\t-280\t0.1875\t-273\t0\t82.03125\t\r\n"},
  };
  for (const auto& [format, expected] : cases) {
    SCOPED_TRACE(std::string(hk_export_title(format)));
    EXPECT_EQ(exported(format), expected);
  }
  // With no sensor ticked a row is the number and the time.
  EXPECT_EQ(exported(HKFormat::Calibrated, {2, 3}, {}, ';'),
            "Housekeeping - Calibrated Data (no AD590 correction)\r\n"
            "HK number;Lander time;\r\n     ;seconds;\r\n\r\n2;1001;\r\n3;1002;\r\n");
}

// The records keep, per calibrated column, what it wrote last, and the next export's unit heading
// reads them: the table's own unit before, the conversion's after.
TEST_F(HousekeepingExport, TheCalibratedFormatsLeaveWhatTheyWroteLastInTheRecords) {
  session.config.sensor(29).Sensor_Unit = "millimetres";
  const Configuration before = session.config;
  const std::string raw = exported(HKFormat::Raw, {1, 2}, ticked({29}));
  EXPECT_TRUE(testing::contains(raw, "\tmillimetres\t")) << raw;
  EXPECT_EQ(session.config.sensor(29).Sensor_Unit, "millimetres") << "the raw format keeps nothing";

  const std::string first = exported(HKFormat::Calibrated_AD590, {1, 2}, ticked({1, 29}));
  EXPECT_TRUE(testing::contains(first, "\tmillimetres\t")) << first;
  const std::pair<int, SensorValue> kept[] = {{1, hk_byte_value(before, 1, 0, board_cold_junction_term(before, 0))},
                                               {29, hk_byte_value(before, 29, 0, 0)}};
  for (const auto& [sensor, value] : kept) {
    const SensorRecord& record = session.config.sensor(sensor);
    EXPECT_EQ(record.Raw_Reading, value.raw) << sensor;
    EXPECT_EQ(record.Voltage, value.voltage) << sensor;
    EXPECT_EQ(record.Value, value.value) << sensor;
    EXPECT_EQ(record.Sensor_Unit, value.unit) << sensor;
  }
  EXPECT_EQ(session.config.sensor(22).Sensor_Unit, before.sensor(22).Sensor_Unit) << "not exported";
  EXPECT_TRUE(testing::contains(exported(HKFormat::Calibrated, {1, 1}, ticked({29})), "\tmm\t"));
}

// A failing conversion ends the export after the headings; the cells written before it keep their
// values in the records, as the rows of a cancelled export do.
TEST_F(HousekeepingExport, AnExportThatStopsKeepsTheLinesAndCellsItWrote) {
  session.config.Pressure_Table[0].C2 = session.config.Pressure_Table[0].C1;  // division by zero
  session.config.sensor(1).Raw_Reading = 5;
  session.config.sensor(22).Raw_Reading = 5;
  const auto [number, kept] = failed_write(
      [&](LineSink& out) { write_housekeeping(session, {{1, 2}, HKFormat::Calibrated, ticked({1, 22})}, out); });
  EXPECT_EQ(number, 11);
  EXPECT_EQ(kept,
            "Housekeeping - Calibrated Data (no AD590 correction)\r\n"
            "HK number\tLander time\tReactor 1\tPressure 1\t\r\n     \tseconds\toC\tbar\t\r\n\r\n");
  EXPECT_EQ(session.config.sensor(1).Raw_Reading, -128);  // written before Pressure 1 failed
  EXPECT_EQ(session.config.sensor(22).Raw_Reading, 5);

  // Cancelled after the first row: that row's values stay.
  const ExportProgress cancel_after_one = [](int64_t done, int64_t) { return done < 1; };
  written([&](LineSink& out) {
    EXPECT_TRUE(write_housekeeping(session, {{1, 2}, HKFormat::Calibrated, ticked({29})}, out, cancel_after_one)
                    .cancelled);
  });
  EXPECT_EQ(session.config.sensor(29).Raw_Reading, 70);
}

// A workbook holds texts as texts (blanks kept), numbers as numbers and empty cells as none.
TEST_F(HousekeepingExport, AWorkbookHoldsTheCellsOfTheText) {
  written([&](LineSink& out) { write_housekeeping(session, {{1, 3}, HKFormat::Calibrated, ticked(kColumns)}, out); },
          '\t', "out.xlsx");
  const testing::Sheet sheet = testing::read_sheet(dir.path("out.xlsx"));
  ASSERT_EQ(sheet.size(), 7u);
  EXPECT_EQ(sheet[0][0].text, "Housekeeping - Calibrated Data (no AD590 correction)");
  EXPECT_EQ(sheet[2][0].text, "     ");
  EXPECT_TRUE(sheet[3].empty());
  EXPECT_EQ(sheet[4][1].kind, testing::SheetCell::Number);
  EXPECT_EQ(sheet[4][1].value, 1000);
  EXPECT_EQ(sheet[4][6].value, 14.21875);
  EXPECT_EQ(sheet[4][7].value, -17.578125);
}

}  // namespace
}  // namespace morvane
