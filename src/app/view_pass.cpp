// SPDX-License-Identifier: MIT
#include "view_pass.h"

#include <QApplication>
#include <QScopeGuard>

#include "background_pass.h"
#include "child_view.h"
#include "workstation.h"

namespace morvane {

namespace {
bool cancel_for_testing = false;
}  // namespace

void cancel_view_passes_for_testing(bool cancel) { cancel_for_testing = cancel; }

bool run_view_pass(ChildView& view, const QString& label, const std::function<void(const ProgressFunction&)>& pass) {
  if (cancel_for_testing) return false;
  Workstation& workstation = view.workstation();
  const PausedCollection paused(workstation);
  workstation.set_menus_enabled(false);
  // The frame too, so that the window cannot be closed under its own work.
  QWidget* window = view.frame() ? static_cast<QWidget*>(view.frame()) : &view;
  window->setEnabled(false);
  QApplication::setOverrideCursor(Qt::BusyCursor);
  const auto restore = qScopeGuard([&] {
    QApplication::restoreOverrideCursor();
    window->setEnabled(true);
    workstation.set_menus_enabled(true);
  });
  return run_with_progress(&view, label, pass);
}

}  // namespace morvane
