// SPDX-License-Identifier: MIT
// morvane-egse: the workstation. Started in the folder that holds Morvane_Files.txt;
// --type T FILE loads a telemetry file at once.
#include <iostream>
#include <memory>

#include <QApplication>
#include <QCommandLineParser>
#include <QFileInfo>
#include <QTimer>

#include "core/file_format.h"
#include "dialogs.h"
#include "main_window.h"
#include "screenshots.h"
#include "startup.h"

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setOrganizationName("Morvane");
  QApplication::setApplicationName("Morvane EGSE");
  QApplication::setApplicationVersion("0.1.0");

  QCommandLineParser parser;
  parser.setApplicationDescription("Morvane EGSE: the ground-support workstation of the Morvane instrument");
  parser.addHelpOption();
  parser.addVersionOption();
  const QCommandLineOption type_option({"t", "type"}, "Format of FILE: CSS, QM, GRM, FM or ZEB.", "T");
  const QCommandLineOption screenshots_option("screenshots", "Write a PNG of every window into DIR and end.", "DIR");
  parser.addOption(type_option);
  parser.addOption(screenshots_option);
  parser.addPositionalArgument("FILE", "Telemetry file to load at start.", "[FILE]");
  parser.process(application);

  std::optional<morvane::FileFormat> type;
  QString file;
  if (!parser.positionalArguments().isEmpty()) {
    file = QFileInfo(parser.positionalArguments().first()).absoluteFilePath();
    type = morvane::parse_format_tag(parser.value(type_option).toStdString());
    if (!type) {
      std::cerr << "morvane-egse: give the format of " << file.toStdString() << " with --type CSS|QM|GRM|FM|ZEB\n";
      return 2;
    }
  }

  const bool screenshots = parser.isSet(screenshots_option);
  std::unique_ptr<morvane::Dialogs> dialogs;
  if (screenshots) {
    dialogs = std::make_unique<morvane::ConsoleDialogs>();
  } else {
    dialogs = std::make_unique<morvane::QtDialogs>();
  }
  // Pictures are taken of a fresh layout; a user's run comes back as it was left.
  std::unique_ptr<morvane::EGSE_MDI> window = morvane::Main(*dialogs, {}, !screenshots);

  QTimer::singleShot(0, window.get(), [&] {
    if (type) window->loadFile(*type, file);
    if (screenshots) {
      for (const QString& path : morvane::write_screenshots(*window, parser.value(screenshots_option))) {
        std::cout << path.toStdString() << '\n';
      }
      QApplication::exit(0);
    }
  });
  const int status = application.exec();
  window.reset();
  return status;
}
