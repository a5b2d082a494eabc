// SPDX-License-Identifier: MIT
#include "main_workstation.h"

#include <QMenuBar>
#include <QTimer>

#include "main_window.h"

namespace morvane {

MainWorkstation::MainWorkstation(EGSE_MDI& window) : window_(window) { setObjectName("Workstation"); }

Session& MainWorkstation::session() { return window_.session(); }

Dialogs& MainWorkstation::dialogs() { return window_.dialogs(); }

ChildView* MainWorkstation::view(ViewKind kind) { return window_.views().view(kind); }

ChildView* MainWorkstation::show_view(ViewKind kind) { return window_.views().show_view(kind); }

void MainWorkstation::close_view(ViewKind kind) { window_.views().close_view(kind); }

void MainWorkstation::show_entry(ViewKind kind) { window_.views().show_entry(kind); }

bool MainWorkstation::load_file(FileFormat type, const QString& path) { return window_.load_file(type, path); }

void MainWorkstation::set_byte_reverse(bool on) { window_.set_byte_reverse(on); }

bool MainWorkstation::collection_ticking() const { return window_.collection_timer()->isActive(); }

void MainWorkstation::set_collection_ticking(bool on) {
  if (on) {
    window_.collection_timer()->start();
  } else {
    window_.collection_timer()->stop();
  }
}

void MainWorkstation::set_menus_enabled(bool on) { window_.menuBar()->setEnabled(on); }

}  // namespace morvane
