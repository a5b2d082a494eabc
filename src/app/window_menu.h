// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include <QKeySequence>
#include <QObject>

class QAction;
class QActionGroup;
class QMenu;

namespace morvane {

class EGSE_MDI;

// "&Window", after the menus of the workstation: Close, Close All, Tile, Cascade, Next and
// Previous, then one item per open window with a check on the active one (the menu is made
// anew each time it opens). Ctrl+W closes the active window, Ctrl+Tab and Ctrl+Shift+Tab go to
// the next and previous one.
class WindowMenu : public QObject {
  Q_OBJECT

 public:
  explicit WindowMenu(EGSE_MDI& window);

  QMenu* menu() const { return menu_; }
  // Makes the items for the windows open now (done as the menu opens).
  void rebuild();

 private:
  QAction* addItem(const char* name, const QString& caption, const QKeySequence& shortcut, void (WindowMenu::*slot)());
  void close_active();
  void close_all();
  void tile();
  void cascade();
  void next();
  void previous();

  EGSE_MDI& window_;
  QMenu* menu_;
  QActionGroup* windows_;
  std::vector<QAction*> fixed_;
};

}  // namespace morvane
