// SPDX-License-Identifier: MIT
#include "live_follow.h"

#include <QDir>

#include "dialogs.h"
#include "main_window.h"

namespace morvane {

Live_Follow::Live_Follow(EGSE_MDI& window) : QObject(&window), window_(window) {
  setObjectName("LiveFollow");
}

void Live_Follow::follow() {
  identity_ = file_identity(window_.session().File_Name);
  waiting_ = false;
}

bool Live_Follow::logChanged() {
  const Session& session = window_.session();
  if (!session.file || !window_.isCollecting()) return false;
  const FileIdentity named = file_identity(session.File_Name);
  if (named == identity_) {
    waiting_ = false;
    return false;
  }
  const QString path = QDir::toNativeSeparators(QString::fromStdString(session.File_Name));
  if (!named.exists()) {
    if (!waiting_) {
      waiting_ = true;
      window_.dialogs().message(&window_, tr("The log file %1 was deleted: collection waits for it to return.").arg(path));
    }
    return true;
  }
  const QString what = waiting_ ? tr("The log file %1 is back") : tr("The log file %1 was replaced by a new file");
  waiting_ = false;
  window_.dialogs().message(&window_, what.arg(path) + tr(": collection starts again from its first frame."));
  window_.startCollection();
  return true;
}

}  // namespace morvane
