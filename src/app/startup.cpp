// SPDX-License-Identifier: MIT
#include "startup.h"

#include <QDir>
#include <QFileInfo>

#include "dialogs.h"
#include "error_trap.h"
#include "main_window.h"
#include "settings.h"
#include "window_layout.h"

namespace morvane {

namespace {

const char* const kChooseBase = "Choose the base folder of the configuration (the folder that holds EGSE_info).";

}  // namespace

Configuration read_startup_configuration(const QString& working_folder, Dialogs& dialogs) {
  const QString pointer = QDir(working_folder.isEmpty() ? QStringLiteral(".") : working_folder)
                              .filePath(QString::fromUtf8(kBasePathFile));
  const QString remembered = base_folder_setting();
  QString problem;
  try {
    if (QFileInfo::exists(pointer) || remembered.isEmpty()) {
      return load_configuration_from_pointer(working_folder.toStdString());
    }
    return load_configuration(remembered.toStdString());
  } catch (const std::exception& error) {
    problem = error_text(error);
  }
  // The program runs on with empty tables unless the user finds the configuration.
  QString folder = remembered;
  for (;;) {
    dialogs.message(nullptr, problem + QStringLiteral("\n\n") + QString::fromUtf8(kChooseBase));
    folder = dialogs.existing_folder(nullptr, QString::fromUtf8(kChooseBase), folder);
    if (folder.isEmpty()) return {};
    try {
      Configuration configuration = load_configuration(folder.toStdString());
      set_base_folder_setting(folder);
      return configuration;
    } catch (const std::exception& error) {
      problem = error_text(error);
    }
  }
}

std::unique_ptr<EGSE_MDI> Main(Dialogs& dialogs, const QString& working_folder, bool remember_layout) {
  Configuration configuration = read_startup_configuration(working_folder, dialogs);
  auto window = std::make_unique<EGSE_MDI>(std::move(configuration), dialogs);
  window->show();
  window->set_byte_reverse(true);
  if (remember_layout) {
    restore_window_layout(*window);
    keep_window_layout_on_quit(*window);
  }
  return window;
}

}  // namespace morvane
