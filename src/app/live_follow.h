// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include <QObject>
#include <QString>

#include "core/input_file.h"

class QTimer;
class QWidget;

namespace morvane {

class Dialogs;
struct Session;

// Real-time collection: a 500 ms timer ("Timer1") re-counts the log file's frames, catalogues only
// those that arrived since the last pass and has the open views show them. A log rewritten
// shorter in place is the same file: the passes ignore it until it grows past what was seen. A log
// replaced by a new file (renamed over it, or deleted and made again: a new inode) is followed
// anew from its first frame, as a stop and a start would; a deleted log is waited for and followed
// from its first frame once it is back. Each change of file is said in a message.
class LiveFollow : public QObject {
  Q_OBJECT

 public:
  // What collection asks of the program around it.
  struct Hooks {
    // Loads the log into the session from its first frame, under the collecting caption, with
    // the open views rebuilt. Returns false when nothing changed (the failure was shown).
    std::function<bool(const QString& path)> load_log;
    // Update_Open_Views: the open views show what a pass added.
    std::function<void()> update_views;
    // True while a load holds the session: a pass then does nothing.
    std::function<bool()> busy;
  };

  // Collection of `session`, whose messages go through `dialogs` over `window`.
  LiveFollow(Session& session, Dialogs& dialogs, QWidget& window, Hooks hooks);

  // The collection timer (500 ms); the concise view's Pause/Continue switches it.
  QTimer* timer() const { return timer_; }
  // Collection is on (the check mark of "Real &Time Data Collection"), paused or not.
  bool collecting() const { return collecting_; }
  // The menu item: starts collection when it is off, stops it when it is on.
  void toggle();
  // Loads the log from its first frame and starts the passes. A log that cannot be loaded
  // leaves collection as it was.
  void start();
  // Stops the passes; the catalogue stays as it is for browsing.
  void stop();
  // One pass: catalogues the frames that arrived and updates the open views. A pass that fails
  // stops collection, then shows the error.
  void Timer1_Timer();

  // The log file followed, as the user gave it; it is resolved like a configuration path.
  QString log_file() const;
  void set_log_file(const QString& path);
  // Asks the user for the log file to follow.
  void choose_log_file();

  // The log was deleted and collection waits for it.
  bool waiting() const { return waiting_; }

 signals:
  // Collection went on or off (also after a start that failed: the state it kept).
  void collecting_changed(bool on);

 private:
  // True when the log's path no longer names the file collection opened: the pass has nothing
  // more to do (collection started again, or waits for the log).
  bool log_changed();

  Session& session_;
  Dialogs& dialogs_;
  QWidget& window_;
  Hooks hooks_;
  QTimer* timer_;
  FileIdentity identity_;  // the file the log's path named when collection opened it
  bool collecting_ = false;
  bool waiting_ = false;
  bool in_tick_ = false;
};

}  // namespace morvane
