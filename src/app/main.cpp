// SPDX-License-Identifier: MIT
// morvane-egse: the workstation. Started in the folder that holds Morvane_Files.txt;
// --type T FILE loads a telemetry file at once.
#include <iostream>
#include <memory>

#include <QApplication>
#include <QCommandLineParser>
#include <QFileInfo>
#include <QMdiArea>
#include <QTimer>

#include "core/file_format.h"
#include "dialogs.h"
#include "main_window.h"
#include "core/program_version.h"
#include "recent_files.h"
#include "screenshots.h"
#include "startup.h"

namespace {

// --help and --version are answered by a core application, which needs no display: the
// window system is only reached once the arguments are known to ask for the workstation.
void answer_help_and_version(int argc, char** argv, QCommandLineParser& parser,
                             const QCommandLineOption& help, const QCommandLineOption& version) {
  const QCoreApplication probe(argc, argv);
  parser.parse(QCoreApplication::arguments());  // an unknown option is reported below, by process()
  if (parser.isSet(help) || parser.isSet(QStringLiteral("help-all"))) parser.showHelp(0);
  if (parser.isSet(version)) parser.showVersion();
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication::setOrganizationName("Morvane");
  QCoreApplication::setApplicationName("Morvane EGSE");
  QCoreApplication::setApplicationVersion(morvane::kProgramVersion);

  QCommandLineParser parser;
  parser.setApplicationDescription("Morvane EGSE: the ground-support workstation of the Morvane instrument");
  const QCommandLineOption help_option = parser.addHelpOption();
  const QCommandLineOption version_option = parser.addVersionOption();
  const QCommandLineOption type_option({"t", "type"}, "Format of FILE: CSS, QM, GRM, FM or ZEB.", "T");
  const QCommandLineOption screenshots_option("screenshots", "Write a PNG of every window into DIR and end.", "DIR");
  parser.addOption(type_option);
  parser.addOption(screenshots_option);
  parser.addPositionalArgument("FILE", "Telemetry file to load at start.", "[FILE]");
  answer_help_and_version(argc, argv, parser, help_option, version_option);

  QApplication application(argc, argv);
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

  // The file of the last run comes back with the views that showed it (unless the user turned
  // that off, or named a file).
  if (!type && !screenshots && morvane::reopen_last_file_setting() && !window->mdi_area()->subWindowList().isEmpty()) {
    const std::vector<morvane::RecentFile> recent = morvane::recent_files();
    if (!recent.empty() && QFileInfo(recent.front().path).isFile()) {
      type = recent.front().format;
      file = recent.front().path;
    }
  }

  QTimer::singleShot(0, window.get(), [&] {
    if (type) window->load_file(*type, file);
    // A file given with no window to show it opens on its summary.
    if (type && !screenshots && window->mdi_area()->subWindowList().isEmpty()) {
      window->show_view(morvane::ViewKind::Summary);
    }
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
