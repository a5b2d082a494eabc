// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

class QLabel;
class QTimer;

namespace morvane {

class EGSE_MDI;

// The main window's status bar: the loaded file, its format, the byte order, the frame count,
// the state of live following (following / paused / stopped, with the size of the log), and
// the last warning (a format that looks wrong). It reads the window's state on a load and twice
// a second, so that no handler has to remember to tell it.
class StatusLine : public QObject {
  Q_OBJECT

 public:
  explicit StatusLine(EGSE_MDI& window);

  // Shows the window's state now.
  void refresh();
  // A warning shown until the next load replaces it.
  void set_warning(const QString& text);

  QString file_text() const;
  QString format_text() const;
  QString byte_order_text() const;
  QString frames_text() const;
  QString follow_text() const;
  QString warning_text() const;

 private:
  void file_loaded();

  EGSE_MDI& window_;
  QLabel* file_;
  QLabel* format_;
  QLabel* byte_order_;
  QLabel* frames_;
  QLabel* follow_;
  QLabel* warning_;
  QTimer* timer_;
};

// "following, 12.3 KiB" / "paused, ..." / "stopped": live following as the status bar says it.
QString follow_state_text(bool collecting, bool timer_running, qint64 log_bytes);

}  // namespace morvane
