// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace morvane {

// What the workstation remembers between runs (QSettings of the application).

// The log file that real-time collection follows by default, written as the ground station's
// documents name it; it is found like a configuration path (letter case and separators).
inline constexpr const char* kDefaultLogFile = "c:\\windows\\desktop\\ZEB - CDMS\\tmlog.dat";

// The log file to follow: the user's choice, or the default.
QString log_file_setting();
void set_log_file_setting(const QString& path);

// The base folder the user picked when Morvane_Files.txt could not be used; empty if none.
QString base_folder_setting();
void set_base_folder_setting(const QString& folder);

// The folder of the last telemetry file opened, where the open dialog starts.
QString last_folder_setting();
void set_last_folder_setting(const QString& folder);

// The campaign archive last opened (a SQLite file or a postgresql:// URL); empty if none.
QString archive_setting();
void set_archive_setting(const QString& path_or_url);

// The folder last used by a kind of file dialog ("export", "report", "log"); empty if none.
QString folder_setting(const QString& kind);
void set_folder_setting(const QString& kind, const QString& folder);
// The folder a save dialog of a kind starts in: the one last used for it, else fallback.
QString start_folder(const QString& kind, const QString& fallback);

}  // namespace morvane
