// SPDX-License-Identifier: MIT
#include "window_menu.h"

#include <QActionGroup>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>

#include "main_window.h"

namespace morvane {

WindowMenu::WindowMenu(EGSE_MDI& window)
    : QObject(&window), window_(window), menu_(window.menuBar()->addMenu(tr("&Window"))), windows_(new QActionGroup(this)) {
  menu_->setObjectName("mnuWindow");
  menu_->menuAction()->setObjectName("mnuWindow");
  addItem("mnuWindowClose", tr("Cl&ose"), QKeySequence(Qt::CTRL | Qt::Key_W), &WindowMenu::close_active);
  addItem("mnuWindowCloseAll", tr("Close &All"), {}, &WindowMenu::close_all);
  menu_->addSeparator();
  addItem("mnuWindowTile", tr("&Tile"), {}, &WindowMenu::tile);
  addItem("mnuWindowCascade", tr("&Cascade"), {}, &WindowMenu::cascade);
  menu_->addSeparator();
  addItem("mnuWindowNext", tr("Ne&xt"), QKeySequence(Qt::CTRL | Qt::Key_Tab), &WindowMenu::next);
  addItem("mnuWindowPrevious", tr("Pre&vious"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Backtab),
          &WindowMenu::previous);
  menu_->addSeparator()->setObjectName("mnuWindowListSeparator");
  windows_->setExclusive(true);
  connect(menu_, &QMenu::aboutToShow, this, &WindowMenu::rebuild);
  rebuild();
}

QAction* WindowMenu::addItem(const char* name, const QString& caption, const QKeySequence& shortcut,
                              void (WindowMenu::*slot)()) {
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

void WindowMenu::rebuild() {
  // Made anew as the menu opens, never while one of its items is being chosen.
  qDeleteAll(windows_->actions());
  const QList<QMdiSubWindow*> frames = window_.mdi_area()->subWindowList();
  const bool any = !frames.isEmpty();
  for (QAction* action : fixed_) action->setEnabled(any);
  QMdiSubWindow* active = window_.mdi_area()->activeSubWindow();
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
      window_.mdi_area()->setActiveSubWindow(frame);
    });
  }
}

void WindowMenu::close_active() { window_.mdi_area()->closeActiveSubWindow(); }
void WindowMenu::close_all() { window_.mdi_area()->closeAllSubWindows(); }
void WindowMenu::tile() { window_.mdi_area()->tileSubWindows(); }
void WindowMenu::cascade() { window_.mdi_area()->cascadeSubWindows(); }
void WindowMenu::next() { window_.mdi_area()->activateNextSubWindow(); }
void WindowMenu::previous() { window_.mdi_area()->activatePreviousSubWindow(); }

}  // namespace morvane
