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
  virtual QString open_file_name(QWidget* parent, const QString& caption, const QString& folder,
                               const QString& filter) = 0;
  // Several files to open; by default the one file open_file_name gives.
  virtual QStringList open_file_names(QWidget* parent, const QString& caption, const QString& folder,
                                    const QString& filter) {
    const QString one = open_file_name(parent, caption, folder, filter);
    return one.isEmpty() ? QStringList() : QStringList{one};
  }
  virtual QString save_file_name(QWidget* parent, const QString& caption, const QString& folder,
                               const QString& filter) = 0;
  // The folder chosen, or an empty text when the user cancelled.
  virtual QString existing_folder(QWidget* parent, const QString& caption, const QString& folder) = 0;

  // A plain message box under the program's own caption, with OK.
  virtual void message(QWidget* parent, const QString& text) = 0;
  // True when the user answers OK (Yes).
  virtual bool ask_ok_cancel(QWidget* parent, const QString& text) = 0;
  virtual bool ask_yes_no(QWidget* parent, const QString& text) = 0;

  // Lets the user set up the printer for a print job; false when the user cancelled. Without a
  // print dialog (a run without a user) every print is cancelled.
  virtual bool choose_printer(QWidget* /*parent*/, QPrinter& /*printer*/) { return false; }

  // One of a few choices, each an option button under the text (a "&" marks its access key), the
  // preselected one checked: its index, or -1 when the user cancelled. Without a user: -1.
  virtual int choose_one(QWidget* /*parent*/, const QString& /*text*/, const QStringList& /*choices*/,
                        int /*preselected*/) {
    return -1;
  }

  // A line of text the user types (initial filled in): the text, or an empty text when the user
  // cancelled. Without a user: empty.
  virtual QString ask_text(QWidget* /*parent*/, const QString& /*text*/, const QString& /*initial*/) { return {}; }
};

// The dialogs of the desktop: QFileDialog and QMessageBox.
class QtDialogs : public Dialogs {
 public:
  QString open_file_name(QWidget* parent, const QString& caption, const QString& folder, const QString& filter) override;
  QStringList open_file_names(QWidget* parent, const QString& caption, const QString& folder,
                            const QString& filter) override;
  QString save_file_name(QWidget* parent, const QString& caption, const QString& folder, const QString& filter) override;
  QString existing_folder(QWidget* parent, const QString& caption, const QString& folder) override;
  void message(QWidget* parent, const QString& text) override;
  bool ask_ok_cancel(QWidget* parent, const QString& text) override;
  bool ask_yes_no(QWidget* parent, const QString& text) override;
  bool choose_printer(QWidget* parent, QPrinter& printer) override;
  int choose_one(QWidget* parent, const QString& text, const QStringList& choices, int preselected) override;
  QString ask_text(QWidget* parent, const QString& text, const QString& initial) override;
};

// The caption of the program's message boxes.
inline constexpr const char* kProgramCaption = "Morvane EGSE";

}  // namespace morvane

namespace morvane {

// Dialogs for a run without a user (screenshots, scripts): messages go to the error stream and
// every question is answered with Cancel.
class ConsoleDialogs : public Dialogs {
 public:
  QString open_file_name(QWidget*, const QString&, const QString&, const QString&) override { return {}; }
  QString save_file_name(QWidget*, const QString&, const QString&, const QString&) override { return {}; }
  QString existing_folder(QWidget*, const QString&, const QString&) override { return {}; }
  void message(QWidget* parent, const QString& text) override;
  bool ask_ok_cancel(QWidget*, const QString&) override { return false; }
  bool ask_yes_no(QWidget*, const QString&) override { return false; }
};

}  // namespace morvane
