// SPDX-License-Identifier: MIT
#pragma once

namespace morvane {

// Every child window of the main window. A window joins the program by registering a factory
// for its kind (view_registry.cpp); until then its menu items stay disabled, and the entry
// windows the summary opens show a placeholder.
enum class ViewKind {
  RawData,                          // the raw packet view
  Summary,                          // the summary lists
  Concise,                          // Concise_Form
  Housekeeping,                     // Housekeeping_form
  Auxiliary,                        // Auxiliary_form
  Spectra,                          // Spectra_Form
  Information,                      // Information_Form
  AD590,                            // AD590_Cal
  PressureCalibration,              // Calibration
  ShortTestList,                    // ShortMessageLoad
  ShortTest,                        // ShortTest
  GeneralTests,                     // TestForm
  ExportHousekeeping,               // Export_HK
  ExportAuxiliary,                  // Export_Aux
  ExportSpectra,                    // Export_Spectra
  ExportDockingStationCalibration,  // Export_DS_Cal
  Trend,                            // housekeeping sensors over the whole file
  Integrity,                        // what may be wrong with the file's data
  Campaign,                         // every file of a campaign archive
};

inline constexpr ViewKind kAllViewKinds[] = {
    ViewKind::RawData,       ViewKind::Summary,          ViewKind::Concise,
    ViewKind::Housekeeping,  ViewKind::Auxiliary,        ViewKind::Spectra,
    ViewKind::Information,   ViewKind::AD590,            ViewKind::PressureCalibration,
    ViewKind::ShortTestList, ViewKind::ShortTest,        ViewKind::GeneralTests,
    ViewKind::ExportHousekeeping, ViewKind::ExportAuxiliary, ViewKind::ExportSpectra,
    ViewKind::ExportDockingStationCalibration,
    ViewKind::Trend,         ViewKind::Integrity,        ViewKind::Campaign,
};

// The window's name ("RawData", "Housekeeping_form", ...): its object name, and the file name
// of its screenshot.
const char* view_name(ViewKind kind);
// What a user calls the window ("Raw Data", "Housekeeping", ...).
const char* view_title(ViewKind kind);

// The windows a summary double click opens for an entry; they show a placeholder until they
// are registered.
inline bool is_entry_view(ViewKind kind) {
  return kind == ViewKind::Housekeeping || kind == ViewKind::Auxiliary || kind == ViewKind::Spectra ||
         kind == ViewKind::Information;
}

}  // namespace morvane
