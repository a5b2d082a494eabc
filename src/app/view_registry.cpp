// SPDX-License-Identifier: MIT
#include "view_registry.h"

#include "ad590_dialog.h"
#include "auxiliary_form.h"
#include "calibration_dialog.h"
#include "campaign_window.h"
#include "concise_view.h"
#include "export_form.h"
#include "housekeeping_form.h"
#include "information_form.h"
#include "integrity_form.h"
#include "main_window.h"
#include "raw_view.h"
#include "spectra_form.h"
#include "short_test_list_view.h"
#include "short_test_view.h"
#include "summary_view.h"
#include "test_form_view.h"
#include "trend_form.h"

namespace morvane {

void register_standard_views(EGSE_MDI& mdi) {
  mdi.registerView(ViewKind::RawData, [](EGSE_MDI& m) { return new RawData(m); });
  mdi.registerView(ViewKind::Summary, [](EGSE_MDI& m) { return new Summary(m); });
  mdi.registerView(ViewKind::Concise, [](EGSE_MDI& m) { return new Concise_Form(m); });
  mdi.registerView(ViewKind::Housekeeping, [](EGSE_MDI& m) { return new Housekeeping_form(m); });
  mdi.registerView(ViewKind::Auxiliary, [](EGSE_MDI& m) { return new Auxiliary_form(m); });
  mdi.registerView(ViewKind::AD590, [](EGSE_MDI& m) { return new AD590_Dialog(m); });
  mdi.registerView(ViewKind::PressureCalibration, [](EGSE_MDI& m) { return new Calibration_Dialog(m); });
  mdi.registerView(ViewKind::Spectra, [](EGSE_MDI& m) { return new Spectra_Form(m); });
  mdi.registerView(ViewKind::Information, [](EGSE_MDI& m) { return new Information_Form(m); });
  mdi.registerView(ViewKind::ShortTestList, [](EGSE_MDI& m) { return new ShortMessageLoad(m); });
  mdi.registerView(ViewKind::ShortTest, [](EGSE_MDI& m) { return new ShortTest(m); });
  mdi.registerView(ViewKind::GeneralTests, [](EGSE_MDI& m) { return new TestForm(m); });
  for (const ViewKind kind : {ViewKind::ExportHousekeeping, ViewKind::ExportAuxiliary, ViewKind::ExportSpectra,
                              ViewKind::ExportDockingStationCalibration}) {
    mdi.registerView(kind, [kind](EGSE_MDI& m) { return new Export_Form(m, kind); });
  }
  mdi.registerView(ViewKind::Trend, [](EGSE_MDI& m) { return new Trend_Form(m); });
  mdi.registerView(ViewKind::Integrity, [](EGSE_MDI& m) { return new Integrity_Form(m); });
  mdi.registerView(ViewKind::Campaign, [](EGSE_MDI& m) { return new Campaign_Window(m); });
}

}  // namespace morvane
