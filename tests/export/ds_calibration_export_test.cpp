// SPDX-License-Identifier: MIT
#include "export/ds_calibration_export.h"

#include "export_fixture.h"

namespace morvane {
namespace {

using testing::aux_packet;
using testing::hk_packet;
using testing::sensor_bytes;

class DSCalibrationExport : public testing::ExportTest {
 protected:
  void SetUp() override {
    ExportTest::SetUp();
    // Docking-station readings in file order: a housekeeping byte, two auxiliary readings (a
    // reactor's between them is not one), a housekeeping byte, an auxiliary reading.
    load({hk_packet(2, sensor_bytes({{29, 70}}), {}, 1, 1000),
          aux_packet({{0, 1001, 29, 0x0800}, {0, 1002, 101, 0x0800}, {0, 1003, 29, 0xF000}}),
          hk_packet(1, sensor_bytes({{29, 0}}), {}, 2, 1004),
          aux_packet({{0, 1005, 29, 0x4000}})});
  }
  std::string exported(DSFormat format, EntryRange range) {
    const DSCalibrationIndex index(session);
    return written([&](LineSink& out) { write_ds_calibration(session, index, {range, format}, out); });
  }
  std::string headings(const char* data, const char* column) {
    return "Docking station calibration data acquired from " + session.File_Name + "\r\n" + data + "\r\n\r\nTime\t" +
           column + "\t\r\n\r\n";
  }
};

TEST_F(DSCalibrationExport, WritesEachFormatsLines) {
  const std::pair<DSFormat, std::string> cases[] = {
      // 70 x 2^7 counts is 2.734375 V, 14.21875 mm; 0x0800 is 0.625 V; 0xF000 is -4096 counts.
      {DSFormat::Distance, headings("Data in calibrated position (mm)", "Position") +
                               "1000\t14.22\t\r\n1001\t3.25\t\r\n1003\t-6.50\t\r\n1004\t0.00\t\r\n1005\t26.00\t\r\n"},
      {DSFormat::ADC, headings("Data in sensor ADC values", "ADC value") +
                          "1000\t8960\t\r\n1001\t2048\t\r\n1003\t-4096\t\r\n1004\t0\t\r\n1005\t16384\t\r\n"},
      {DSFormat::Voltage, headings("Data in sensor voltages (V)", "Voltage") +
                              "1000\t2.734\t\r\n1001\t0.625\t\r\n1003\t-1.250\t\r\n1004\t0.000\t\r\n1005\t5.000\t\r\n"},
  };
  for (const auto& [format, expected] : cases) {
    SCOPED_TRACE("format " + std::to_string(static_cast<int>(format)));
    EXPECT_EQ(exported(format, {1, 5}), expected);
  }
  // Without the sensor in the table there are no entries.
  session.config.Sensor_Table.resize(28);
  EXPECT_EQ(DSCalibrationIndex(session).count(), 0);
}

}  // namespace
}  // namespace morvane
