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

ChildView* MainWorkstation::showView(ViewKind kind) { return window_.views().showView(kind); }

void MainWorkstation::closeView(ViewKind kind) { window_.views().closeView(kind); }

void MainWorkstation::show_entry(ViewKind kind) { window_.views().show_entry(kind); }

bool MainWorkstation::loadFile(FileFormat type, const QString& path) { return window_.loadFile(type, path); }

void MainWorkstation::setByteReverse(bool on) { window_.setByteReverse(on); }

bool MainWorkstation::collection_ticking() const { return window_.collectionTimer()->isActive(); }

void MainWorkstation::set_collection_ticking(bool on) {
  if (on) {
    window_.collectionTimer()->start();
  } else {
    window_.collectionTimer()->stop();
  }
}

void MainWorkstation::set_menus_enabled(bool on) { window_.menuBar()->setEnabled(on); }

}  // namespace morvane
