// SPDX-License-Identifier: MIT
#include "view_registry.h"

#include "concise_view.h"
#include "main_window.h"
#include "raw_view.h"
#include "short_test_list_view.h"
#include "short_test_view.h"
#include "summary_view.h"
#include "test_form_view.h"

namespace morvane {

void register_standard_views(EGSE_MDI& mdi) {
  mdi.registerView(ViewKind::RawData, [](EGSE_MDI& m) { return new RawData(m); });
  mdi.registerView(ViewKind::Summary, [](EGSE_MDI& m) { return new Summary(m); });
  mdi.registerView(ViewKind::Concise, [](EGSE_MDI& m) { return new Concise_Form(m); });
  mdi.registerView(ViewKind::ShortTestList, [](EGSE_MDI& m) { return new ShortMessageLoad(m); });
  mdi.registerView(ViewKind::ShortTest, [](EGSE_MDI& m) { return new ShortTest(m); });
  mdi.registerView(ViewKind::GeneralTests, [](EGSE_MDI& m) { return new TestForm(m); });
}

}  // namespace morvane
