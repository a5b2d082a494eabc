// SPDX-License-Identifier: MIT
#include "view_pass.h"

#include <QApplication>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QScopeGuard>
#include <QTimer>

#include "background_pass.h"
#include "child_view.h"
#include "main_window.h"

namespace morvane {

namespace {
bool cancel_for_testing = false;
}  // namespace

void cancel_view_passes_for_testing(bool cancel) { cancel_for_testing = cancel; }

bool run_view_pass(ChildView& view, const QString& label, const std::function<void(const ProgressFunction&)>& pass) {
  if (cancel_for_testing) return false;
  EGSE_MDI& mdi = view.mdi();
  QTimer* collection = mdi.collectionTimer();
  const bool collecting = collection->isActive();
  collection->stop();
  mdi.menuBar()->setEnabled(false);
  // The frame too, so that the window cannot be closed under its own work.
  QWidget* window = mdi.frameOf(&view) ? static_cast<QWidget*>(mdi.frameOf(&view)) : &view;
  window->setEnabled(false);
  QApplication::setOverrideCursor(Qt::BusyCursor);
  const auto restore = qScopeGuard([&] {
    QApplication::restoreOverrideCursor();
    window->setEnabled(true);
    mdi.menuBar()->setEnabled(true);
    if (collecting) collection->start();
  });
  return run_with_progress(&view, label, pass);
}

}  // namespace morvane
