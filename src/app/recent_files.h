// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include <QObject>
#include <QString>

#include "core/file_format.h"

class QAction;
class QMenu;

namespace morvane {

class EGSE_MDI;

// A file loaded before, with the format it was loaded as (a format is never guessed).
struct RecentFile {
  FileFormat format = FileFormat::CSS;
  QString path;
  bool operator==(const RecentFile&) const = default;
};
inline constexpr int kRecentFileCount = 8;

// The files loaded last, most recent first, as the program's settings keep them.
std::vector<RecentFile> recent_files();
// Puts a file at the top of the list, once, with the format it was last loaded as.
void remember_recent_file(const RecentFile& file);
void forget_recent_file(const QString& path);
// The format of the file loaded last (QM when none was): what Ctrl+O asks for.
FileFormat last_format();

// Whether the program reopens the file loaded last when its window layout comes back at start
// (on unless the user turned it off).
bool reopen_last_file_setting();
void set_reopen_last_file_setting(bool on);

// File > "Recent Files": every file the main window loads is remembered with its format, and
// choosing one loads it again in that format. A file that is no longer there is a message and
// leaves the list. Beside it: "&Open <format> file..." (Ctrl+O), the open dialog for the format
// loaded last, and "Reopen &Last File at Start", the setting.
class RecentFilesMenu : public QObject {
  Q_OBJECT

 public:
  // Puts the items in the File menu, before the separator above "E&xit".
  explicit RecentFilesMenu(EGSE_MDI& window);

  QMenu* menu() const { return menu_; }
  // Loads recent file i (from 0) as its item does. Returns whether it was loaded.
  bool open(int i);

 private:
  void rebuild();

  EGSE_MDI& window_;
  QMenu* menu_;
  QAction* open_last_format_;
};

}  // namespace morvane
