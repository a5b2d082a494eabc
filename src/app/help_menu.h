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
class HelpMenu : public QObject {
  Q_OBJECT

 public:
  explicit HelpMenu(EGSE_MDI& window);

  // Shows the help window on the guide (or on the keyboard page); returns it.
  QTextBrowser* show_guide();
  QTextBrowser* show_shortcuts();
  void show_about();

 private:
  void open_guide();
  void open_shortcuts();
  QTextBrowser* show_page(const QString& resource, const QString& title);

  EGSE_MDI& window_;
  QPointer<QTextBrowser> browser_;
};

// The resources of the help window: the guide as Markdown, and its pictures beside it.
inline constexpr const char* kUserGuideResource = "qrc:/help/user-guide.md";
inline constexpr const char* kShortcutsResource = "qrc:/help/keyboard.md";

// The About text: version, build, Qt version (built with, running on) and the settings' place.
QString about_text();

}  // namespace morvane
