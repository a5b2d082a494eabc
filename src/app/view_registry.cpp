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
#include "raw_view.h"
#include "spectra_form.h"
#include "short_test_list_view.h"
#include "short_test_view.h"
#include "summary_view.h"
#include "test_form_view.h"
#include "trend_form.h"
#include "view_manager.h"

namespace morvane {

void register_standard_views(ViewManager& views) {
  views.registerView(ViewKind::RawData, [](Workstation& w) { return new RawData(w); });
  views.registerView(ViewKind::Summary, [](Workstation& w) { return new Summary(w); });
  views.registerView(ViewKind::Concise, [](Workstation& w) { return new Concise_Form(w); });
  views.registerView(ViewKind::Housekeeping, [](Workstation& w) { return new Housekeeping_form(w); });
  views.registerView(ViewKind::Auxiliary, [](Workstation& w) { return new Auxiliary_form(w); });
  views.registerView(ViewKind::AD590, [](Workstation& w) { return new AD590_Dialog(w); });
  views.registerView(ViewKind::PressureCalibration, [](Workstation& w) { return new Calibration_Dialog(w); });
  views.registerView(ViewKind::Spectra, [](Workstation& w) { return new Spectra_Form(w); });
  views.registerView(ViewKind::Information, [](Workstation& w) { return new Information_Form(w); });
  views.registerView(ViewKind::ShortTestList, [](Workstation& w) { return new ShortMessageLoad(w); });
  views.registerView(ViewKind::ShortTest, [](Workstation& w) { return new ShortTest(w); });
  views.registerView(ViewKind::GeneralTests, [](Workstation& w) { return new TestForm(w); });
  for (const ViewKind kind : {ViewKind::ExportHousekeeping, ViewKind::ExportAuxiliary, ViewKind::ExportSpectra,
                              ViewKind::ExportDockingStationCalibration}) {
    views.registerView(kind, [kind](Workstation& w) { return new Export_Form(w, kind); });
  }
  views.registerView(ViewKind::Trend, [](Workstation& w) { return new Trend_Form(w); });
  views.registerView(ViewKind::Integrity, [](Workstation& w) { return new Integrity_Form(w); });
  views.registerView(ViewKind::Campaign, [](Workstation& w) { return new Campaign_Window(w); });
}

}  // namespace morvane
