// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

class QTextBrowser;

namespace morvane {

class EGSE_MDI;

// "&Help", the last menu: "&User Guide" (F1) opens the guide shipped inside the program in a
// help window of its own, "&Keyboard Shortcuts" lists the keys, "&About Morvane EGSE" says the
// version, the build, the Qt version and where the settings are kept.
class Help_Menu : public QObject {
  Q_OBJECT

 public:
  explicit Help_Menu(EGSE_MDI& window);

  // Shows the help window on the guide (or on the keyboard page); returns it.
  QTextBrowser* showGuide();
  QTextBrowser* showShortcuts();
  void showAbout();

 private:
  void openGuide();
  void openShortcuts();
  QTextBrowser* showPage(const QString& resource, const QString& title);

  EGSE_MDI& window_;
  QPointer<QTextBrowser> browser_;
};

// The resources of the help window: the guide as Markdown, and its pictures beside it.
inline constexpr const char* kUserGuideResource = "qrc:/help/user-guide.md";
inline constexpr const char* kShortcutsResource = "qrc:/help/keyboard.md";

// The About text: version, build, Qt version (built with, running on) and the settings' place.
QString about_text();

}  // namespace morvane
