// SPDX-License-Identifier: MIT
#include "window_menu.h"

#include <QActionGroup>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>

#include "main_window.h"

namespace morvane {

Window_Menu::Window_Menu(EGSE_MDI& window)
    : QObject(&window), window_(window), menu_(window.menuBar()->addMenu(tr("&Window"))), windows_(new QActionGroup(this)) {
  menu_->setObjectName("mnuWindow");
  menu_->menuAction()->setObjectName("mnuWindow");
  addItem("mnuWindowClose", tr("Cl&ose"), QKeySequence(Qt::CTRL | Qt::Key_W), &Window_Menu::closeActive);
  addItem("mnuWindowCloseAll", tr("Close &All"), {}, &Window_Menu::closeAll);
  menu_->addSeparator();
  addItem("mnuWindowTile", tr("&Tile"), {}, &Window_Menu::tile);
  addItem("mnuWindowCascade", tr("&Cascade"), {}, &Window_Menu::cascade);
  menu_->addSeparator();
  addItem("mnuWindowNext", tr("Ne&xt"), QKeySequence(Qt::CTRL | Qt::Key_Tab), &Window_Menu::next);
  addItem("mnuWindowPrevious", tr("Pre&vious"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Backtab),
          &Window_Menu::previous);
  menu_->addSeparator()->setObjectName("mnuWindowListSeparator");
  windows_->setExclusive(true);
  connect(menu_, &QMenu::aboutToShow, this, &Window_Menu::rebuild);
  rebuild();
}

QAction* Window_Menu::addItem(const char* name, const QString& caption, const QKeySequence& shortcut,
                              void (Window_Menu::*slot)()) {
  QAction* action = menu_->addAction(caption);
  action->setObjectName(name);
  if (!shortcut.isEmpty()) {
    action->setShortcut(shortcut);
    // Ctrl+Tab also from inside a child window, which would otherwise take it for its own focus.
    action->setShortcutContext(Qt::ApplicationShortcut);
  }
  connect(action, &QAction::triggered, this, slot);
  fixed_.push_back(action);
  return action;
}

void Window_Menu::rebuild() {
  // Made anew as the menu opens, never while one of its items is being chosen.
  qDeleteAll(windows_->actions());
  const QList<QMdiSubWindow*> frames = window_.mdiArea()->subWindowList();
  const bool any = !frames.isEmpty();
  for (QAction* action : fixed_) action->setEnabled(any);
  QMdiSubWindow* active = window_.mdiArea()->activeSubWindow();
  int n = 0;
  for (QMdiSubWindow* frame : frames) {
    ++n;
    const QString title = frame->widget() ? frame->widget()->windowTitle() : frame->windowTitle();
    // The first nine get their number as access key, as the example program does.
    const QString caption = n < 10 ? tr("&%1 %2").arg(n).arg(title) : tr("%1 %2").arg(n).arg(title);
    QAction* action = menu_->addAction(caption);
    action->setObjectName(QStringLiteral("mnuWindowShow%1").arg(n));
    action->setCheckable(true);
    action->setChecked(frame == active);
    windows_->addAction(action);
    connect(action, &QAction::triggered, frame, [this, frame] {
      if (frame->isMinimized()) frame->showNormal();
      window_.mdiArea()->setActiveSubWindow(frame);
    });
  }
}

void Window_Menu::closeActive() { window_.mdiArea()->closeActiveSubWindow(); }
void Window_Menu::closeAll() { window_.mdiArea()->closeAllSubWindows(); }
void Window_Menu::tile() { window_.mdiArea()->tileSubWindows(); }
void Window_Menu::cascade() { window_.mdiArea()->cascadeSubWindows(); }
void Window_Menu::next() { window_.mdiArea()->activateNextSubWindow(); }
void Window_Menu::previous() { window_.mdiArea()->activatePreviousSubWindow(); }

}  // namespace morvane
