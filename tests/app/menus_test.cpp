// SPDX-License-Identifier: MIT
#include <QMenu>
#include <QMenuBar>

#include "app_fixture.h"

namespace morvane {
namespace {

using MainMenus = testing::AppTest;

TEST_F(MainMenus, EveryItemHasItsExactCaption) {
  const std::pair<const char*, const char*> items[] = {
      {"mnuFileLoad_CSS", "Load &CSS file (282 bytes)"},
      {"mnuLoadFile_GRM", "Load &GRM file (280 bytes)"},
      {"mnuLoadFile_FM", "Load & FM file (280 bytes)"},
      {"mnuLoadFile_QM", "Load &QM file (282 bytes)"},
      {"mnuLoadFile_ZebFormat", "Load File (&ZEB format)"},
      {"mnuExit", "E&xit"},
      {"mnuDisplayConciseData", "&Concise Data"},
      {"mnuDisplayRawData", "&Raw Data"},
      {"mnuDisplaySUmmary", "&Summary"},
      {"mnuDisplayByteReverse", "&Byte Reverse"},
      {"mnuDisplayRealTimeDataCollection", "Real &Time Data Collection"},
      {"mnuAuxAD590Temp", "&Aux AD590 Temp"},
      {"mnuCalibrate_Pressure_Sensors", "&Pressure Sensors"},
      {"mnuTest_Cruise_Phase_mode", "&Cruise Phase Mode"},
      {"mnuTest_EAFT_mode", "&EAFT"},
      {"mnuGeneraltests", "&General Tests"},
      {"mnuExportHousekeeping", "&Housekeeping"},
      {"mnuExportScienceAuxilliary", "Science &Auxilliary"},
      {"mnuExportScienceSpectra", "Science &Spectra"},
      {"mnuExportDockingStationCalibration", "&Docking Station Calibration"},
  };
  for (const auto& [name, caption] : items) {
    const QAction* item = window->menuItem(name);
    ASSERT_NE(item, nullptr) << name;
    EXPECT_EQ(item->text().toStdString(), caption) << name;
  }
  EXPECT_TRUE(window->menuItem("mnuSeparartor1")->isSeparator());
  EXPECT_TRUE(window->menuItem("mnuSeparator2")->isSeparator());
}

TEST_F(MainMenus, TopLevelCaptionsKeepTheirTrailingBlanksInOrder) {
  std::vector<std::string> captions;
  for (const QAction* menu : window->menuBar()->actions()) captions.push_back(menu->text().toStdString());
  EXPECT_EQ(captions, (std::vector<std::string>{"&File          ", "&Display          ", "&Calibration          ",
                                                "&Test          ", "&Export           "}));
}

TEST_F(MainMenus, OnlyByteReverseAndCollectionCarryCheckMarks) {
  EXPECT_TRUE(window->menuItem("mnuDisplayByteReverse")->isCheckable());
  EXPECT_TRUE(window->menuItem("mnuDisplayByteReverse")->isChecked());
  EXPECT_TRUE(window->menuItem("mnuDisplayRealTimeDataCollection")->isCheckable());
  EXPECT_FALSE(window->menuItem("mnuDisplayRealTimeDataCollection")->isChecked());
  EXPECT_FALSE(window->menuItem("mnuDisplayRawData")->isCheckable());
}

TEST_F(MainMenus, ItemsOfWindowsNotYetRegisteredStayDisabled) {
  for (const char* name : {"mnuDisplayConciseData", "mnuDisplayRawData", "mnuDisplaySUmmary", "mnuFileLoad_CSS",
                           "mnuDisplayByteReverse", "mnuDisplayRealTimeDataCollection"}) {
    EXPECT_TRUE(window->menuItem(name)->isEnabled()) << name;
  }
  const std::pair<const char*, ViewKind> pending[] = {
      {"mnuAuxAD590Temp", ViewKind::AD590},
      {"mnuCalibrate_Pressure_Sensors", ViewKind::PressureCalibration},
      {"mnuTest_EAFT_mode", ViewKind::ShortTestList},
      {"mnuGeneraltests", ViewKind::GeneralTests},
      {"mnuExportHousekeeping", ViewKind::ExportHousekeeping},
      {"mnuExportScienceSpectra", ViewKind::ExportSpectra},
  };
  for (const auto& [name, kind] : pending) {
    EXPECT_EQ(window->menuItem(name)->isEnabled(), window->isRegistered(kind)) << name;
  }
  window->registerView(ViewKind::GeneralTests, [](EGSE_MDI& mdi) { return new ChildView(mdi, ViewKind::GeneralTests); });
  EXPECT_TRUE(window->menuItem("mnuGeneraltests")->isEnabled());
  window->menuItem("mnuGeneraltests")->trigger();
  EXPECT_NE(window->view(ViewKind::GeneralTests), nullptr);
}

TEST_F(MainMenus, TheViewItemsOpenTheirWindowsOnceEvenWithNoFile) {
  for (const auto& [name, kind] : {std::pair{"mnuDisplayRawData", ViewKind::RawData},
                                   std::pair{"mnuDisplaySUmmary", ViewKind::Summary},
                                   std::pair{"mnuDisplayConciseData", ViewKind::Concise}}) {
    window->menuItem(name)->trigger();
    ChildView* shown = window->view(kind);
    ASSERT_NE(shown, nullptr) << name;
    window->menuItem(name)->trigger();
    EXPECT_EQ(window->view(kind), shown) << name;
  }
  EXPECT_TRUE(dialogs.messages.empty());
}

TEST_F(MainMenus, TheTestItemsSetTheMode) {
  window->registerView(ViewKind::ShortTestList, [](EGSE_MDI& mdi) { return new ChildView(mdi, ViewKind::ShortTestList); });
  window->menuItem("mnuTest_Cruise_Phase_mode")->trigger();
  EXPECT_EQ(window->session().Test_Mode, "Cruise Phase");
  window->menuItem("mnuTest_EAFT_mode")->trigger();
  EXPECT_EQ(window->session().Test_Mode, "EAFT");
  EXPECT_NE(window->view(ViewKind::ShortTestList), nullptr);
}

}  // namespace
}  // namespace morvane
