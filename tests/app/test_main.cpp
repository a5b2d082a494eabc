// SPDX-License-Identifier: MIT
// The GUI tests run under one offscreen application whose settings live in a folder of their
// own, so that no test reads or writes the user's.
#include <gtest/gtest.h>

#include <cstdlib>

#include <QtWidgets>

int main(int argc, char** argv) {
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  QApplication application(argc, argv);
  QApplication::setOrganizationName("MorvaneTests");
  QApplication::setApplicationName("Morvane EGSE Tests");
  QTemporaryDir settings;
  QSettings::setDefaultFormat(QSettings::IniFormat);
  QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, settings.path());
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
