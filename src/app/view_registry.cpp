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
#include "short_test_form_view.h"
#include "trend_form.h"
#include "view_manager.h"

namespace morvane {

void register_standard_views(ViewManager& views) {
  views.register_view(ViewKind::RawData, [](Workstation& w) { return new RawData(w); });
  views.register_view(ViewKind::Summary, [](Workstation& w) { return new Summary(w); });
  views.register_view(ViewKind::Concise, [](Workstation& w) { return new Concise_Form(w); });
  views.register_view(ViewKind::Housekeeping, [](Workstation& w) { return new Housekeeping_form(w); });
  views.register_view(ViewKind::Auxiliary, [](Workstation& w) { return new Auxiliary_form(w); });
  views.register_view(ViewKind::AD590, [](Workstation& w) { return new AD590Dialog(w); });
  views.register_view(ViewKind::PressureCalibration, [](Workstation& w) { return new CalibrationDialog(w); });
  views.register_view(ViewKind::Spectra, [](Workstation& w) { return new Spectra_Form(w); });
  views.register_view(ViewKind::Information, [](Workstation& w) { return new Information_Form(w); });
  views.register_view(ViewKind::ShortTestList, [](Workstation& w) { return new ShortMessageLoad(w); });
  views.register_view(ViewKind::ShortTest, [](Workstation& w) { return new ShortTest(w); });
  views.register_view(ViewKind::GeneralTests, [](Workstation& w) { return new TestForm(w); });
  for (const ViewKind kind : {ViewKind::ExportHousekeeping, ViewKind::ExportAuxiliary, ViewKind::ExportSpectra,
                              ViewKind::ExportDockingStationCalibration}) {
    views.register_view(kind, [kind](Workstation& w) { return new ExportForm(w, kind); });
  }
  views.register_view(ViewKind::Trend, [](Workstation& w) { return new TrendForm(w); });
  views.register_view(ViewKind::Integrity, [](Workstation& w) { return new IntegrityForm(w); });
  views.register_view(ViewKind::Campaign, [](Workstation& w) { return new CampaignWindow(w); });
}

}  // namespace morvane
