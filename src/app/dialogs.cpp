// SPDX-License-Identifier: MIT
#include "dialogs.h"

#include <QButtonGroup>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>
#include <QRegularExpression>
#include <cstdio>

namespace morvane {

QString QtDialogs::open_file_name(QWidget* parent, const QString& caption, const QString& folder,
                                const QString& filter) {
  return QFileDialog::getOpenFileName(parent, caption, folder, filter);
}

QStringList QtDialogs::open_file_names(QWidget* parent, const QString& caption, const QString& folder,
                                    const QString& filter) {
  return QFileDialog::getOpenFileNames(parent, caption, folder, filter);
}

namespace {

// The extension of a file type of a dialog's filter, "xlsx" of "Excel workbook (*.xlsx)"; empty
// for "All files (*)".
QString first_extension(const QString& file_type) {
  static const QRegularExpression k_extension(QStringLiteral("\\*\\.(\\w+)"));
  return k_extension.match(file_type).captured(1);
}

// Every message shown is also written to the error stream as one line (its line breaks become
// blanks), so that a run from a terminal, or a test's log, shows every failure.
void echo_to_error_stream(const QString& text) {
  static const QRegularExpression k_line_breaks(QStringLiteral("\\s*[\\r\\n]+\\s*"));
  const QByteArray line = QString(text).replace(k_line_breaks, QStringLiteral(" ")).trimmed().toUtf8() + '\n';
  std::fwrite(line.constData(), 1, static_cast<size_t>(line.size()), stderr);
  std::fflush(stderr);
}

}  // namespace

QString QtDialogs::save_file_name(QWidget* parent, const QString& caption, const QString& folder,
                                const QString& filter) {
  // A name typed without an extension takes that of the file type chosen, so the type the user
  // picked is the type written (and the overwrite question names the file that is written).
  QFileDialog dialog(parent, caption, folder, filter);
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setFileMode(QFileDialog::AnyFile);
  const auto follow_type = [&dialog](const QString& file_type) { dialog.setDefaultSuffix(first_extension(file_type)); };
  QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, follow_type);
  follow_type(dialog.selectedNameFilter());
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
  return dialog.selectedFiles().constFirst();
}

QString QtDialogs::existing_folder(QWidget* parent, const QString& caption, const QString& folder) {
  return QFileDialog::getExistingDirectory(parent, caption, folder);
}

void QtDialogs::message(QWidget* parent, const QString& text) {
  echo_to_error_stream(text);
  QMessageBox::information(parent, kProgramCaption, text);
}

bool QtDialogs::ask_ok_cancel(QWidget* parent, const QString& text) {
  return QMessageBox::question(parent, kProgramCaption, text, QMessageBox::Ok | QMessageBox::Cancel) ==
         QMessageBox::Ok;
}

bool QtDialogs::ask_yes_no(QWidget* parent, const QString& text) {
  return QMessageBox::question(parent, kProgramCaption, text, QMessageBox::Yes | QMessageBox::No) ==
         QMessageBox::Yes;
}

bool QtDialogs::choose_printer(QWidget* parent, QPrinter& printer) {
  QPrintDialog dialog(&printer, parent);
  return dialog.exec() == QDialog::Accepted;
}

int QtDialogs::choose_one(QWidget* parent, const QString& text, const QStringList& choices, int preselected) {
  QDialog dialog(parent);
  dialog.setWindowTitle(kProgramCaption);
  auto* layout = new QVBoxLayout(&dialog);
  layout->addWidget(new QLabel(text, &dialog));
  auto* group = new QButtonGroup(&dialog);
  for (int i = 0; i < choices.size(); ++i) {
    auto* option = new QRadioButton(choices[i], &dialog);
    option->setChecked(i == preselected);
    group->addButton(option, i);
    layout->addWidget(option);
  }
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
  QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  layout->addWidget(buttons);
  if (dialog.exec() != QDialog::Accepted) return -1;
  return group->checkedId();
}

QString QtDialogs::ask_text(QWidget* parent, const QString& text, const QString& initial) {
  bool accepted = false;
  const QString typed = QInputDialog::getText(parent, kProgramCaption, text, QLineEdit::Normal, initial, &accepted);
  return accepted ? typed.trimmed() : QString();
}

}  // namespace morvane

namespace morvane {

void ConsoleDialogs::message(QWidget*, const QString& text) { echo_to_error_stream(text); }

}  // namespace morvane
