// SPDX-License-Identifier: MIT
#include "help_menu.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QSettings>
#include <QTextBrowser>

#include "dialogs.h"
#include "main_window.h"
#include "core/program_version.h"

// The help pages are compiled into the (static) application library: their registration is
// called for, or the linker would leave it out.
static void init_help_resources() { Q_INIT_RESOURCE(help); }

namespace morvane {

QString about_text() {
  return QObject::tr("Morvane EGSE %1\n\n"
                     "The ground-support workstation of the Morvane gas-analysis instrument.\n\n"
                     "Build: %2\n"
                     "Qt: %3 (built with %4)\n"
                     "Settings: %5")
      .arg(QString::fromUtf8(kProgramVersion), QString::fromUtf8(kProgramBuild), QString::fromUtf8(qVersion()),
           QStringLiteral(QT_VERSION_STR), QSettings().fileName());
}

HelpMenu::HelpMenu(EGSE_MDI& window) : QObject(&window), window_(window) {
  init_help_resources();
  QMenu* menu = window.menuBar()->addMenu(tr("&Help"));
  menu->setObjectName("mnuHelp");
  menu->menuAction()->setObjectName("mnuHelp");
  auto add = [&](const char* name, const QString& caption, void (HelpMenu::*show)()) {
    QAction* action = menu->addAction(caption);
    action->setObjectName(name);
    connect(action, &QAction::triggered, this, show);
    return action;
  };
  QAction* guide = add("mnuHelpGuide", tr("&User Guide"), &HelpMenu::open_guide);
  guide->setShortcut(QKeySequence::HelpContents);
  guide->setShortcutContext(Qt::ApplicationShortcut);
  add("mnuHelpKeyboard", tr("&Keyboard Shortcuts"), &HelpMenu::open_shortcuts);
  menu->addSeparator();
  add("mnuHelpAbout", tr("&About Morvane EGSE"), &HelpMenu::show_about);
}

QTextBrowser* HelpMenu::show_page(const QString& resource, const QString& title) {
  if (!browser_) {
    // A window of its own beside the workstation, so that the guide stays readable while the
    // child windows are arranged.
    browser_ = new QTextBrowser(&window_);
    browser_->setObjectName("HelpWindow");
    browser_->setWindowFlag(Qt::Window);
    browser_->setAttribute(Qt::WA_DeleteOnClose);
    browser_->setOpenExternalLinks(true);
    browser_->resize(760, 640);
  }
  browser_->setSource(QUrl(resource), QTextDocument::MarkdownResource);
  browser_->setWindowTitle(title);
  browser_->show();
  browser_->raise();
  browser_->activateWindow();
  return browser_;
}

void HelpMenu::open_guide() { show_guide(); }
void HelpMenu::open_shortcuts() { show_shortcuts(); }

QTextBrowser* HelpMenu::show_guide() {
  return show_page(QString::fromUtf8(kUserGuideResource), tr("Morvane EGSE User Guide"));
}

QTextBrowser* HelpMenu::show_shortcuts() {
  return show_page(QString::fromUtf8(kShortcutsResource), tr("Morvane EGSE Keyboard Shortcuts"));
}

void HelpMenu::show_about() { window_.dialogs().message(&window_, about_text()); }

}  // namespace morvane
