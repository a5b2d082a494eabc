// SPDX-License-Identifier: MIT
// Every message the window shows also reaches the error stream, one line of the same text, so
// that a run from a terminal, or a test's log, shows it.
#include <gtest/gtest.h>

#include <QApplication>
#include <QMessageBox>
#include <QTimer>

#include "dialogs.h"

namespace morvane {
namespace {

TEST(ErrorEcho, AMessageBoxIsAlsoOneLineOnTheErrorStream) {
  QtDialogs dialogs;
  QTimer close_box;  // the user's OK
  QObject::connect(&close_box, &QTimer::timeout, [] {
    if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) box->accept();
  });
  close_box.start(10);
  ::testing::internal::CaptureStderr();
  dialogs.message(nullptr, QStringLiteral("File not found: /data/t.qm; Error number 53"));
  dialogs.message(nullptr, QStringLiteral("No configuration was found.\n\nChoose the base folder."));
  // Each message is a line of its own (the platform may add lines of its own between them).
  const std::string written = "\n" + ::testing::internal::GetCapturedStderr();
  EXPECT_NE(written.find("\nFile not found: /data/t.qm; Error number 53\n"), std::string::npos) << written;
  EXPECT_NE(written.find("\nNo configuration was found. Choose the base folder.\n"), std::string::npos) << written;
}

TEST(ErrorEcho, AWindowlessRunWritesItsMessagesTheSameWay) {
  ConsoleDialogs dialogs;
  ::testing::internal::CaptureStderr();
  dialogs.message(nullptr, QStringLiteral("Overflow: t.zeb record 3 item 20; Error number 6\n"));
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "Overflow: t.zeb record 3 item 20; Error number 6\n");
}

}  // namespace
}  // namespace morvane
