// SPDX-License-Identifier: MIT
#include "error_trap.h"

#include <QRegularExpression>
#include <cstdio>
#include <new>

#include "core/error.h"
#include "dialogs.h"

namespace morvane {

QString error_text(const std::exception& error) {
  if (const auto* runtime = dynamic_cast<const RuntimeError*>(&error)) {
    return QString::fromStdString(runtime->message());
  }
  if (dynamic_cast<const std::bad_alloc*>(&error)) return QStringLiteral("Out of memory; Error number 7");
  return QString::fromUtf8(error.what());
}

void echo_to_error_stream(const QString& text) {
  static const QRegularExpression kLineBreaks(QStringLiteral("\\s*[\\r\\n]+\\s*"));
  const QByteArray line = QString(text).replace(kLineBreaks, QStringLiteral(" ")).trimmed().toUtf8() + '\n';
  std::fwrite(line.constData(), 1, static_cast<size_t>(line.size()), stderr);
  std::fflush(stderr);
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
