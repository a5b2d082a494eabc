// SPDX-License-Identifier: MIT
#include "error_trap.h"

#include <filesystem>
#include <new>

#include "core/error.h"
#include "core/system_error.h"
#include "dialogs.h"

namespace morvane {

QString error_text(const std::exception& error) {
  if (const auto* runtime = dynamic_cast<const RuntimeError*>(&error)) {
    return QString::fromStdString(runtime->message());
  }
  if (dynamic_cast<const std::bad_alloc*>(&error)) return QStringLiteral("Out of memory; Error number 7");
  if (const auto* file_system = dynamic_cast<const std::filesystem::filesystem_error*>(&error)) {
    return QString::fromStdString(from_filesystem_error(*file_system).message());
  }
  return QString::fromUtf8(error.what());
}

bool run_trapped(Dialogs& dialogs, QWidget* parent, const std::function<void()>& work) {
  try {
    work();
    return true;
  } catch (const std::exception& error) {
    dialogs.message(parent, error_text(error));
  }
  return false;
}

}  // namespace morvane
