// SPDX-License-Identifier: MIT
#include "dialogs.h"

#include <QFileDialog>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>
#include <iostream>

namespace morvane {

QString QtDialogs::openFileName(QWidget* parent, const QString& caption, const QString& folder,
                                const QString& filter) {
  return QFileDialog::getOpenFileName(parent, caption, folder, filter);
}

QString QtDialogs::saveFileName(QWidget* parent, const QString& caption, const QString& folder,
                                const QString& filter) {
  return QFileDialog::getSaveFileName(parent, caption, folder, filter);
}

QString QtDialogs::existingFolder(QWidget* parent, const QString& caption, const QString& folder) {
  return QFileDialog::getExistingDirectory(parent, caption, folder);
}

void QtDialogs::message(QWidget* parent, const QString& text) {
  QMessageBox::information(parent, kProgramCaption, text);
}

bool QtDialogs::askOkCancel(QWidget* parent, const QString& text) {
  return QMessageBox::question(parent, kProgramCaption, text, QMessageBox::Ok | QMessageBox::Cancel) ==
         QMessageBox::Ok;
}

bool QtDialogs::askYesNo(QWidget* parent, const QString& text) {
  return QMessageBox::question(parent, kProgramCaption, text, QMessageBox::Yes | QMessageBox::No) ==
         QMessageBox::Yes;
}

bool QtDialogs::choosePrinter(QWidget* parent, QPrinter& printer) {
  QPrintDialog dialog(&printer, parent);
  return dialog.exec() == QDialog::Accepted;
}

}  // namespace morvane

namespace morvane {

void ConsoleDialogs::message(QWidget*, const QString& text) { std::cerr << text.toStdString() << '\n'; }

}  // namespace morvane
