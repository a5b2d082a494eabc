// SPDX-License-Identifier: MIT
#include "view_kind.h"

namespace morvane {

const char* view_name(ViewKind kind) {
  switch (kind) {
    case ViewKind::RawData: return "RawData";
    case ViewKind::Summary: return "Summary";
    case ViewKind::Concise: return "Concise_Form";
    case ViewKind::Housekeeping: return "Housekeeping_form";
    case ViewKind::Auxiliary: return "Auxiliary_form";
    case ViewKind::Spectra: return "Spectra_Form";
    case ViewKind::Information: return "Information_Form";
    case ViewKind::AD590: return "AD590_Cal";
    case ViewKind::PressureCalibration: return "Calibration";
    case ViewKind::ShortTestList: return "ShortMessageLoad";
    case ViewKind::ShortTest: return "ShortTest";
    case ViewKind::GeneralTests: return "TestForm";
    case ViewKind::ExportHousekeeping: return "Export_HK";
    case ViewKind::ExportAuxiliary: return "Export_Aux";
    case ViewKind::ExportSpectra: return "Export_Spectra";
    case ViewKind::ExportDockingStationCalibration: return "Export_DS_Cal";
    case ViewKind::Trend: return "Trend_Plot";
    case ViewKind::Integrity: return "Data_Integrity";
    case ViewKind::Campaign: return "Campaign";
  }
  return "View";
}

const char* view_title(ViewKind kind) {
  switch (kind) {
    case ViewKind::RawData: return "Raw Data";
    case ViewKind::Summary: return "Summary";
    case ViewKind::Concise: return "Concise Data";
    case ViewKind::Housekeeping: return "Housekeeping";
    case ViewKind::Auxiliary: return "Auxiliary Data";
    case ViewKind::Spectra: return "Spectra";
    case ViewKind::Information: return "Information";
    case ViewKind::AD590: return "Aux AD590 Temp";
    case ViewKind::PressureCalibration: return "Pressure Sensors";
    case ViewKind::ShortTestList: return "Short Form Tests";
    case ViewKind::ShortTest: return "Short Form Test";
    case ViewKind::GeneralTests: return "General Tests";
    case ViewKind::ExportHousekeeping: return "Export Housekeeping";
    case ViewKind::ExportAuxiliary: return "Export Science Auxiliary";
    case ViewKind::ExportSpectra: return "Export Science Spectra";
    case ViewKind::ExportDockingStationCalibration: return "Export Docking Station Calibration";
    case ViewKind::Trend: return "Trend Plot";
    case ViewKind::Integrity: return "Data Integrity";
    case ViewKind::Campaign: return "Campaign";
  }
  return "View";
}

}  // namespace morvane
