// SPDX-License-Identifier: MIT
#include "file_drop.h"

#include <QAction>
#include <QDir>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QMenuBar>
#include <QMimeData>
#include <QTimer>
#include <QUrl>

#include "dialogs.h"
#include "main_window.h"
#include "recent_files.h"

namespace morvane {

namespace {

// The five load items of the File menu, in menu order.
struct LoadChoice {
  const char* item;
  FileFormat format;
};
constexpr LoadChoice kLoadChoices[] = {
    {"mnuFileLoad_CSS", FileFormat::CSS},       {"mnuLoadFile_GRM", FileFormat::GRM},
    {"mnuLoadFile_FM", FileFormat::FM},         {"mnuLoadFile_QM", FileFormat::QM},
    {"mnuLoadFile_ZebFormat", FileFormat::ZEB},
};

int choice_of(FileFormat format) {
  for (int i = 0; i < static_cast<int>(std::size(kLoadChoices)); ++i) {
    if (kLoadChoices[i].format == format) return i;
  }
  return 0;
}

// The format a file's suffix names ("demo.qm"), else that of the last file loaded, else CSS.
int suggested_choice(const QString& path) {
  if (const std::optional<FileFormat> named = parse_format_tag(QFileInfo(path).suffix().toStdString())) {
    return choice_of(*named);
  }
  const std::vector<RecentFile> recent = recent_files();
  return recent.empty() ? 0 : choice_of(recent.front().format);
}

// The first local file a drag carries, or an empty text.
QString dropped_file(const QMimeData* data) {
  if (!data || !data->hasUrls()) return {};
  for (const QUrl& url : data->urls()) {
    if (url.isLocalFile()) return url.toLocalFile();
  }
  return {};
}

}  // namespace

FileDrop::FileDrop(EGSE_MDI& window) : QObject(&window), window_(window) {
  window.setAcceptDrops(true);
  window.installEventFilter(this);
}

bool FileDrop::load(const QString& path) {
  QStringList choices;
  for (const LoadChoice& choice : kLoadChoices) choices << window_.menu_item(choice.item)->text();
  const int chosen = window_.dialogs().choose_one(&window_, tr(kDropFormatQuestion).arg(QDir::toNativeSeparators(path)),
                                                 choices, suggested_choice(path));
  if (chosen < 0 || chosen >= static_cast<int>(std::size(kLoadChoices))) return false;  // cancelled
  return window_.load_file(kLoadChoices[chosen].format, path);
}

bool FileDrop::eventFilter(QObject* watched, QEvent* event) {
  const QEvent::Type type = event->type();
  if (watched != &window_ || (type != QEvent::DragEnter && type != QEvent::DragMove && type != QEvent::Drop)) {
    return QObject::eventFilter(watched, event);
  }
  // While a load runs the menus are off, and so are drops.
  const bool ready = window_.menuBar()->isEnabled();
  if (type == QEvent::DragEnter || type == QEvent::DragMove) {
    auto* drag = static_cast<QDropEvent*>(event);
    if (ready && !dropped_file(drag->mimeData()).isEmpty()) {
      drag->acceptProposedAction();
    } else {
      drag->ignore();
    }
    return true;
  }
  auto* drop = static_cast<QDropEvent*>(event);
  const QString path = dropped_file(drop->mimeData());
  if (!ready || path.isEmpty()) return true;
  drop->acceptProposedAction();
  // The question and the load come once the drop is over, not inside the drag's own loop.
  QTimer::singleShot(0, this, [this, path] { window_.guarded([&] { load(path); }); });
  return true;
}

}  // namespace morvane
