// SPDX-License-Identifier: MIT
#include "export/auxiliary_export.h"

#include "core/number_text.h"
#include "export_fixture.h"
#include "decoders/auxiliary_presenter.h"

namespace morvane {
namespace {

using testing::aux_packet;
using testing::hk_packet;

class AuxiliaryExport : public testing::ExportTest {
 protected:
  void SetUp() override {
    ExportTest::SetUp();
    // Science entries: 1 an auxiliary packet, 2 a GC spectrum, 3 another auxiliary packet.
    load({aux_packet({{0, 2001, 101, 0},         // Reactor 1 at 0 V: 0 C
                      {0, 2002, 23, 0x2000},     // Pressure 1 at 2.5 V: 0.5 bar
                      {0, 2003, 0, 0xFFFF},      // a switching slot: channel 0 names no sensor
                      {0x8000, 5, 29, 0x0800}}),  // Docking Stn at 0.625 V: 3.25 mm; time -65531
          hk_packet(2),
          testing::gc_packet({0, 0, {0x10}}),
          aux_packet({{0, 3000, 33 + 98, 0x8000}}, 6, 3000)});  // +28V Rail (channel 131) at -10 V
  }
  std::string exported(AuxFormat format, EntryRange range = {1, 3}, char delimiter = '\t', double emf = 0) {
    return written([&](LineSink& out) { write_auxiliary(session, {range, format, emf}, out); }, delimiter);
  }
};

constexpr const char* kHeading = "Science number\tLander time(s)\tChan. ID\tComponent\t";

TEST_F(AuxiliaryExport, WritesEachFormatsLines) {
  const std::pair<AuxFormat, std::string> cases[] = {
      {AuxFormat::ADC, std::string("Auxiliary data - ADC values\r\n") + kHeading + "Word\t\r\n\r\n" +
                            "1\t2001\t101\tReactor 1\t0\t\r\n1\t2002\t23\tPressure 1\t8192\t\r\n"
                            "1\t2003\t0\t\t65535\t\r\n1\t-65531\t29\tDocking Stn\t2048\t\r\n"
                            "3\t3000\t131\t+28V Rail\t32768\t\r\n"},
      {AuxFormat::Calibrated, std::string("Auxiliary data - Calibrated Data (no AD590 correction)\r\n") + kHeading +
                                   "Reading\tUnits\t\r\n\r\n" +
                                   "1\t2001\t101\tReactor 1\t0\toC\t\r\n1\t2002\t23\tPressure 1\t0.5\tbar\t\r\n"
                                   "1\t2003\t0\t\t\t\t\r\n1\t-65531\t29\tDocking Stn\t3.25\tmm\t\r\n"
                                   "3\t3000\t131\t+28V Rail\t-100\tV\t\r\n"},
  };
  for (const auto& [format, expected] : cases) {
    SCOPED_TRACE(aux_export_title(format, ""));
    EXPECT_EQ(exported(format), expected);
  }
}

// The AD590 format corrects the thermocouple channels as the auxiliary view does with the same
// setting (25 C as its N-type voltage), and nothing else.
TEST_F(AuxiliaryExport, TheAD590FormatCorrectsOnlyTheThermocouples) {
  const double emf = session.config.NType.NType_Reverse_Lookup(25);
  session.config.AD590_EMF = emf;
  const std::string reactor = general_text(aux_row(session.config, {2001, 101, 0}, 1).value);  // about 25 C
  session.config.AD590_EMF = 0;
  EXPECT_EQ(exported(AuxFormat::Calibrated_AD590, {1, 1}, ';', emf),
            "Auxiliary data - Calibrated Data (with AD590 correction at 25.00 oC)\r\n"
            "Science number;Lander time(s);Chan. ID;Component;Reading;Units;\r\n\r\n"
            "1;2001;101;Reactor 1;" + reactor + ";oC;\r\n"
            "1;2002;23;Pressure 1;0.5;bar;\r\n"
            "1;2003;0;;;;\r\n"
            "1;-65531;29;Docking Stn;3.25;mm;\r\n");
  EXPECT_NE(reactor, "0");
  EXPECT_EQ(session.config.AD590_EMF, 0);  // the session's own setting stays
}

TEST_F(AuxiliaryExport, APacketOfTooManyReadingsEndsTheExportAfterTheRowsBeforeIt) {
  load({aux_packet({{0, 1, 29, 0}}), aux_packet({{0, 2, 29, 0}}, 6, 2000, 30)});
  const auto [number, kept] =
      failed_write([&](LineSink& out) { write_auxiliary(session, {{1, 2}, AuxFormat::ADC, 0}, out); }, ',');
  EXPECT_NE(number, 0);
  EXPECT_EQ(kept,
            "Auxiliary data - ADC values\r\n"
            "Science number,Lander time(s),Chan. ID,Component,Word,\r\n\r\n1,1,29,Docking Stn,0,\r\n");
}

TEST_F(AuxiliaryExport, ZebRecordsGiveNoRows) {
  testing::LoadedFile zeb(testing::zeb_text({testing::zeb_record(LabelCode::AuxiliaryData, {{9, 5}})}),
                           session.config);
  const std::string text = written([&](LineSink& out) {
    write_auxiliary(zeb.session, {{1, 1}, AuxFormat::Voltage, 0}, out);
  });
  EXPECT_EQ(text.substr(text.find("\r\n\r\n") + 4), "");
}

}  // namespace
}  // namespace morvane
