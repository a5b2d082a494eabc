// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include "core/input_file.h"

namespace morvane {

class EGSE_MDI;

// Watches, at each collection pass, whether the log's path still names the file collection has
// open. A log replaced by a new file (renamed over it, or deleted and made again: a new inode)
// is followed anew from its first frame, as a stop and a start would. A deleted log is waited
// for and followed from its first frame once it is back. Each change is said in a message.
// (A log rewritten shorter in place is the same file: the passes ignore it until it grows.)
class Live_Follow : public QObject {
  Q_OBJECT

 public:
  explicit Live_Follow(EGSE_MDI& window);

  // Called when collection has opened the log: the file its path names now is the one followed.
  void follow();
  // Called by a collection pass before it re-counts the log. True when the log changed: the pass
  // has nothing more to do (collection started again, or waits for the log).
  bool logChanged();
  // The log was deleted and collection waits for it.
  bool waiting() const { return waiting_; }

 private:
  EGSE_MDI& window_;
  FileIdentity identity_;  // the file the log's path named when collection opened it
  bool waiting_ = false;
};

}  // namespace morvane
