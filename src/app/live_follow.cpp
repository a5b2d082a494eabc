// SPDX-License-Identifier: MIT
#include "live_follow.h"

#include <QDir>
#include <QFileInfo>
#include <QTimer>
#include <QWidget>

#include "core/session.h"
#include "core/windows_path.h"
#include "dialogs.h"
#include "error_trap.h"
#include "settings.h"

namespace morvane {

namespace {
constexpr int kCollectionIntervalMilliseconds = 500;
}  // namespace

LiveFollow::LiveFollow(Session& session, Dialogs& dialogs, QWidget& window, Hooks hooks)
    : QObject(&window),
      session_(session),
      dialogs_(dialogs),
      window_(window),
      hooks_(std::move(hooks)),
      timer_(new QTimer(this)) {
  setObjectName("LiveFollow");
  timer_->setObjectName("Timer1");
  timer_->setInterval(kCollectionIntervalMilliseconds);
  connect(timer_, &QTimer::timeout, this, &LiveFollow::Timer1_Timer);
}

void LiveFollow::toggle() {
  if (collecting_) {
    stop();
  } else {
    start();
  }
}

void LiveFollow::start() {
  const QString path = QString::fromStdString(resolve_windows_path(log_file().toStdString()));
  const bool started = hooks_.load_log(path);
  collecting_ = started || collecting_;
  if (started) {
    identity_ = file_identity(session_.File_Name);
    waiting_ = false;
    timer_->start();
  }
  emit collecting_changed(collecting_);
}

void LiveFollow::stop() {
  timer_->stop();
  collecting_ = false;
  emit collecting_changed(false);
}

void LiveFollow::Timer1_Timer() {
  if (in_tick_ || (hooks_.busy && hooks_.busy())) return;
  in_tick_ = true;
  try {
    if (!log_changed() && extend_catalogue(session_)) {
      hooks_.update_views();
      Save_Catalogue_Counts(session_);
    }
  } catch (const std::exception& error) {
    // A failing pass would fail again on every tick: collection stops before the message.
    stop();
    dialogs_.message(&window_, error_text(error));
  }
  in_tick_ = false;
}

bool LiveFollow::log_changed() {
  if (!session_.file || !collecting_) return false;
  const FileIdentity named = file_identity(session_.File_Name);
  if (named == identity_) {
    waiting_ = false;
    return false;
  }
  const QString path = QDir::toNativeSeparators(QString::fromStdString(session_.File_Name));
  if (!named.exists()) {
    if (!waiting_) {
      waiting_ = true;
      dialogs_.message(&window_, tr("The log file %1 was deleted: collection waits for it to return.").arg(path));
    }
    return true;
  }
  const QString what = waiting_ ? tr("The log file %1 is back") : tr("The log file %1 was replaced by a new file");
  waiting_ = false;
  dialogs_.message(&window_, what.arg(path) + tr(": collection starts again from its first frame."));
  start();
  return true;
}

QString LiveFollow::log_file() const { return log_file_setting(); }

void LiveFollow::set_log_file(const QString& path) { set_log_file_setting(path); }

void LiveFollow::choose_log_file() {
  const QString current = QString::fromStdString(resolve_windows_path(log_file().toStdString()));
  const QString path = dialogs_.open_file_name(&window_, tr("Log file to follow"), QFileInfo(current).absolutePath(),
                                             tr("All files (*)"));
  if (!path.isEmpty()) set_log_file(path);
}

}  // namespace morvane
