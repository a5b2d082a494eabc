// SPDX-License-Identifier: MIT
#include "status_line.h"

#include <QFileInfo>
#include <QLabel>
#include <QLocale>
#include <QStatusBar>
#include <QTimer>

#include "main_window.h"
#include "decoders/format_check.h"

namespace morvane {

namespace {

constexpr int kRefreshMilliseconds = 500;

QLabel* add_label(QStatusBar* bar, const char* name, bool permanent) {
  auto* label = new QLabel(bar);
  label->setObjectName(name);
  if (permanent) {
    bar->addPermanentWidget(label);
  } else {
    bar->addWidget(label, 1);
  }
  return label;
}

}  // namespace

QString follow_state_text(bool collecting, bool timer_running, qint64 log_bytes) {
  if (!collecting) return QObject::tr("Live: stopped");
  const QString size = QLocale::system().formattedDataSize(log_bytes, 1, QLocale::DataSizeTraditionalFormat);
  return (timer_running ? QObject::tr("Live: following, %1") : QObject::tr("Live: paused, %1")).arg(size);
}

StatusLine::StatusLine(EGSE_MDI& window) : QObject(&window), window_(window), timer_(new QTimer(this)) {
  setObjectName("StatusLine");
  QStatusBar* bar = window.statusBar();
  bar->setObjectName("StatusBar");
  file_ = add_label(bar, "StatusFile", false);
  warning_ = add_label(bar, "StatusWarning", false);
  warning_->setStyleSheet(QStringLiteral("color: rgb(255, 0, 0)"));
  format_ = add_label(bar, "StatusFormat", true);
  byte_order_ = add_label(bar, "StatusByteOrder", true);
  frames_ = add_label(bar, "StatusFrames", true);
  follow_ = add_label(bar, "StatusFollow", true);
  connect(&window, &EGSE_MDI::file_loaded, this, &StatusLine::file_loaded);
  connect(timer_, &QTimer::timeout, this, &StatusLine::refresh);
  timer_->start(kRefreshMilliseconds);
  refresh();
}

void StatusLine::file_loaded() {
  const auto warning = format_warning(window_.session());
  set_warning(warning ? QString::fromStdString(*warning) : QString());
  refresh();
}

void StatusLine::set_warning(const QString& text) {
  warning_->setText(text.isEmpty() ? QString() : tr("Warning: %1").arg(text));
  warning_->setToolTip(text);
}

void StatusLine::refresh() {
  const Session& s = window_.session();
  const bool loaded = s.loaded();
  file_->setText(loaded ? QFileInfo(QString::fromStdString(s.File_Name)).fileName() : tr("No file loaded"));
  file_->setToolTip(QString::fromStdString(s.File_Name));
  format_->setText(loaded ? QString::fromUtf8(format_tag(s.File_Type).data()) : QString());
  // The byte order means nothing to a text (ZEB) file.
  const bool binary = !loaded || is_binary(s.File_Type);
  byte_order_->setText(binary ? (s.Byte_Reverse ? tr("Low byte first") : tr("High byte first")) : QString());
  frames_->setText(!loaded ? QString() : s.Packet_Count == 1 ? tr("1 frame") : tr("%1 frames").arg(s.Packet_Count));
  const qint64 log_bytes = window_.is_collecting() ? QFileInfo(QString::fromStdString(s.File_Name)).size() : 0;
  follow_->setText(follow_state_text(window_.is_collecting(), window_.collection_timer()->isActive(), log_bytes));
}

QString StatusLine::file_text() const { return file_->text(); }
QString StatusLine::format_text() const { return format_->text(); }
QString StatusLine::byte_order_text() const { return byte_order_->text(); }
QString StatusLine::frames_text() const { return frames_->text(); }
QString StatusLine::follow_text() const { return follow_->text(); }
QString StatusLine::warning_text() const { return warning_->text(); }

}  // namespace morvane
