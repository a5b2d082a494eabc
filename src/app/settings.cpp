// SPDX-License-Identifier: MIT
#include "settings.h"

#include <QSettings>

namespace morvane {

namespace {

constexpr const char* kLogFileKey = "collection/log_file";
constexpr const char* kBaseFolderKey = "startup/base_folder";
constexpr const char* kLastFolderKey = "files/last_folder";
constexpr const char* kArchiveKey = "campaign/archive";

QString text_setting(const char* key, const QString& fallback = {}) {
  return QSettings().value(key, fallback).toString();
}

void set_text_setting(const char* key, const QString& value) { QSettings().setValue(key, value); }

}  // namespace

QString log_file_setting() { return text_setting(kLogFileKey, QString::fromUtf8(kDefaultLogFile)); }
void set_log_file_setting(const QString& path) { set_text_setting(kLogFileKey, path); }

QString base_folder_setting() { return text_setting(kBaseFolderKey); }
void set_base_folder_setting(const QString& folder) { set_text_setting(kBaseFolderKey, folder); }

QString last_folder_setting() { return text_setting(kLastFolderKey); }
void set_last_folder_setting(const QString& folder) { set_text_setting(kLastFolderKey, folder); }

QString archive_setting() { return text_setting(kArchiveKey); }
void set_archive_setting(const QString& path_or_url) { set_text_setting(kArchiveKey, path_or_url); }

QString folder_setting(const QString& kind) { return QSettings().value(QStringLiteral("folders/") + kind).toString(); }
void set_folder_setting(const QString& kind, const QString& folder) {
  QSettings().setValue(QStringLiteral("folders/") + kind, folder);
}

QString start_folder(const QString& kind, const QString& fallback) {
  const QString last = folder_setting(kind);
  return last.isEmpty() ? fallback : last;
}

}  // namespace morvane
