// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "child_view.h"
#include "functest/short_message_load.h"

class QLabel;
class QListWidget;
class QPushButton;

namespace morvane {

class TelemetryFile;

// ShortMessageLoad: the short form tests of the loaded file in the session's Test_Mode, one line
// each under the headings "Seq. Count" and "Lander time (s)", with two lines saying how many were
// found and what to do. A double click opens the evaluation of a test in place of the one open,
// and closes the list; "Cancel" closes it.
class ShortMessageLoad : public ChildView {
  Q_OBJECT

 public:
  // Scans the file; a Test_Mode other than "Cruise Phase" or "EAFT" fails the opening.
  explicit ShortMessageLoad(Workstation& workstation);

  // The double click on a line (0-based row).
  void List1_DblClick(int row);
  // "Cancel".
  void Command2_Click();

  QListWidget* list() const { return list1_; }
  QString label1() const;
  QString label2() const;
  QPushButton* cancel_button() const { return command2_; }
  const ShortTestList& tests() const { return tests_; }

 private:
  void Form_Load();
  void close_later();

  ShortTestList tests_;
  // The file the list was made from: after another load its lines no longer name its entries.
  std::weak_ptr<const TelemetryFile> scanned_file_;
  QListWidget* list1_;
  QLabel* label1_;
  QLabel* label2_;
  QPushButton* command2_;
};

}  // namespace morvane
