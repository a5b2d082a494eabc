// SPDX-License-Identifier: MIT
#include "recent_files.h"

#include <algorithm>

#include <QAction>
#include <QDir>
#include <QFileInfo>
#include <QMenu>
#include <QSettings>

#include "dialogs.h"
#include "main_window.h"

namespace morvane {

namespace {

constexpr const char* kRecentKey = "files/recent";
constexpr const char* kFormatKey = "format";
constexpr const char* kPathKey = "path";
constexpr const char* kReopenKey = "files/reopen_last";

void store(const std::vector<RecentFile>& files) {
  QSettings settings;
  settings.remove(kRecentKey);
  settings.beginWriteArray(kRecentKey, static_cast<int>(files.size()));
  for (int i = 0; i < static_cast<int>(files.size()); ++i) {
    settings.setArrayIndex(i);
    settings.setValue(kFormatKey, QString::fromUtf8(format_tag(files[static_cast<size_t>(i)].format).data()));
    settings.setValue(kPathKey, files[static_cast<size_t>(i)].path);
  }
  settings.endArray();
}

QString format_text(FileFormat format) { return QString::fromUtf8(format_tag(format).data()); }

}  // namespace

std::vector<RecentFile> recent_files() {
  QSettings settings;
  std::vector<RecentFile> files;
  const int count = settings.beginReadArray(kRecentKey);
  for (int i = 0; i < count; ++i) {
    settings.setArrayIndex(i);
    const std::optional<FileFormat> format = parse_format_tag(settings.value(kFormatKey).toString().toStdString());
    const QString path = settings.value(kPathKey).toString();
    if (format && !path.isEmpty()) files.push_back({*format, path});  // a damaged entry is passed over
  }
  settings.endArray();
  return files;
}

void remember_recent_file(const RecentFile& file) {
  std::vector<RecentFile> files = recent_files();
  std::erase_if(files, [&](const RecentFile& f) { return f.path == file.path; });
  files.insert(files.begin(), file);
  if (files.size() > static_cast<size_t>(kRecentFileCount)) files.resize(kRecentFileCount);
  store(files);
}

void forget_recent_file(const QString& path) {
  std::vector<RecentFile> files = recent_files();
  std::erase_if(files, [&](const RecentFile& f) { return f.path == path; });
  store(files);
}

FileFormat last_format() {
  const std::vector<RecentFile> files = recent_files();
  return files.empty() ? FileFormat::QM : files.front().format;
}

bool reopen_last_file_setting() { return QSettings().value(kReopenKey, true).toBool(); }
void set_reopen_last_file_setting(bool on) { QSettings().setValue(kReopenKey, on); }

RecentFilesMenu::RecentFilesMenu(EGSE_MDI& window)
    : QObject(&window),
      window_(window),
      menu_(new QMenu(tr("Recent &Files"), &window)),
      open_last_format_(new QAction(&window)) {
  menu_->setObjectName("mnuRecentFiles");
  menu_->menuAction()->setObjectName("mnuRecentFiles");
  open_last_format_->setObjectName("mnuFileOpenLastFormat");
  open_last_format_->setShortcut(QKeySequence::Open);
  connect(open_last_format_, &QAction::triggered, this,
          [this] { window_.guarded([this] { window_.Open_EGSE_File(last_format()); }); });
  auto* reopen = new QAction(tr("Reopen &Last File at Start"), &window);
  reopen->setObjectName("mnuFileReopenLast");
  reopen->setCheckable(true);
  reopen->setChecked(reopen_last_file_setting());
  connect(reopen, &QAction::toggled, this, [](bool on) { set_reopen_last_file_setting(on); });
  auto* file = window.findChild<QMenu*>("mnuFile");
  QAction* separator = window.menu_item("mnuSeparartor1");
  if (file) {
    file->insertAction(separator, open_last_format_);
    file->insertMenu(separator, menu_);
    file->insertAction(separator, reopen);
  }
  connect(&window, &EGSE_MDI::file_loaded, this, [this](FileFormat format, const QString& path) {
    remember_recent_file({format, path});
    rebuild();
  });
  // Another run of the program may have loaded files since.
  connect(menu_, &QMenu::aboutToShow, this, &RecentFilesMenu::rebuild);
  rebuild();
}

void RecentFilesMenu::rebuild() {
  open_last_format_->setText(tr("&Open %1 file...").arg(format_text(last_format())));
  menu_->clear();
  const std::vector<RecentFile> files = recent_files();
  if (files.empty()) {
    menu_->addAction(tr("(none)"))->setEnabled(false);
    return;
  }
  for (int i = 0; i < static_cast<int>(files.size()); ++i) {
    const RecentFile& f = files[static_cast<size_t>(i)];
    QString shown = QDir::toNativeSeparators(f.path);
    shown.replace(QLatin1Char('&'), QStringLiteral("&&"));
    QAction* item = menu_->addAction(QStringLiteral("&%1  %2  %3").arg(i + 1).arg(format_text(f.format), shown));
    item->setObjectName(QStringLiteral("mnuRecentFile%1").arg(i + 1));
    connect(item, &QAction::triggered, this, [this, i] { open(i); });
  }
}

bool RecentFilesMenu::open(int i) {
  const std::vector<RecentFile> files = recent_files();
  if (i < 0 || i >= static_cast<int>(files.size())) return false;
  const RecentFile file = files[static_cast<size_t>(i)];
  if (!QFileInfo(file.path).isFile()) {
    forget_recent_file(file.path);
    rebuild();
    window_.dialogs().message(
        &window_, tr("%1 is no longer there; it leaves the recent files.").arg(QDir::toNativeSeparators(file.path)));
    return false;
  }
  return window_.load_file(file.format, file.path);
}

}  // namespace morvane
