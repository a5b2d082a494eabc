// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

class QPrinter;
class QWidget;

namespace morvane {

// Every question and message the program puts to the user goes through one Dialogs object
// owned beside the main window, so that tests can answer them without a modal loop.
class Dialogs {
 public:
  virtual ~Dialogs() = default;

  // The file chosen to open or to write, or an empty text when the user cancelled.
  virtual QString openFileName(QWidget* parent, const QString& caption, const QString& folder,
                               const QString& filter) = 0;
  // Several files to open; by default the one file openFileName gives.
  virtual QStringList openFileNames(QWidget* parent, const QString& caption, const QString& folder,
                                    const QString& filter) {
    const QString one = openFileName(parent, caption, folder, filter);
    return one.isEmpty() ? QStringList() : QStringList{one};
  }
  virtual QString saveFileName(QWidget* parent, const QString& caption, const QString& folder,
                               const QString& filter) = 0;
  // The folder chosen, or an empty text when the user cancelled.
  virtual QString existingFolder(QWidget* parent, const QString& caption, const QString& folder) = 0;

  // A plain message box under the program's own caption, with OK.
  virtual void message(QWidget* parent, const QString& text) = 0;
  // True when the user answers OK (Yes).
  virtual bool askOkCancel(QWidget* parent, const QString& text) = 0;
  virtual bool askYesNo(QWidget* parent, const QString& text) = 0;

  // Lets the user set up the printer for a print job; false when the user cancelled. Without a
  // print dialog (a run without a user) every print is cancelled.
  virtual bool choosePrinter(QWidget* /*parent*/, QPrinter& /*printer*/) { return false; }

  // One of a few choices, each an option button under the text (a "&" marks its access key), the
  // preselected one checked: its index, or -1 when the user cancelled. Without a user: -1.
  virtual int chooseOne(QWidget* /*parent*/, const QString& /*text*/, const QStringList& /*choices*/,
                        int /*preselected*/) {
    return -1;
  }

  // A line of text the user types (initial filled in): the text, or an empty text when the user
  // cancelled. Without a user: empty.
  virtual QString askText(QWidget* /*parent*/, const QString& /*text*/, const QString& /*initial*/) { return {}; }
};

// The dialogs of the desktop: QFileDialog and QMessageBox.
class QtDialogs : public Dialogs {
 public:
  QString openFileName(QWidget* parent, const QString& caption, const QString& folder, const QString& filter) override;
  QStringList openFileNames(QWidget* parent, const QString& caption, const QString& folder,
                            const QString& filter) override;
  QString saveFileName(QWidget* parent, const QString& caption, const QString& folder, const QString& filter) override;
  QString existingFolder(QWidget* parent, const QString& caption, const QString& folder) override;
  void message(QWidget* parent, const QString& text) override;
  bool askOkCancel(QWidget* parent, const QString& text) override;
  bool askYesNo(QWidget* parent, const QString& text) override;
  bool choosePrinter(QWidget* parent, QPrinter& printer) override;
  int chooseOne(QWidget* parent, const QString& text, const QStringList& choices, int preselected) override;
  QString askText(QWidget* parent, const QString& text, const QString& initial) override;
};

// The caption of the program's message boxes.
inline constexpr const char* kProgramCaption = "Morvane EGSE";

}  // namespace morvane

namespace morvane {

// Dialogs for a run without a user (screenshots, scripts): messages go to the error stream and
// every question is answered with Cancel.
class ConsoleDialogs : public Dialogs {
 public:
  QString openFileName(QWidget*, const QString&, const QString&, const QString&) override { return {}; }
  QString saveFileName(QWidget*, const QString&, const QString&, const QString&) override { return {}; }
  QString existingFolder(QWidget*, const QString&, const QString&) override { return {}; }
  void message(QWidget* parent, const QString& text) override;
  bool askOkCancel(QWidget*, const QString&) override { return false; }
  bool askYesNo(QWidget*, const QString&) override { return false; }
};

}  // namespace morvane
