// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "calibration/pressure_calibration.h"
#include "child_view.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace morvane {

// Calibration: the pressure sensors' two-point calibration, one row per pressure sensor (the
// atmosphere and vacuum readings in millivolts). The entries stay disabled until Modify is
// confirmed; Reset loads the maker's defaults into memory; Accept, once confirmed, rewrites the
// pressure-sensor file safely; Cancel (or the window's close button) reloads the saved file.
// When the dialog closes, open housekeeping and auxiliary views redraw with the table as it
// then stands.
class CalibrationDialog : public ChildView {
  Q_OBJECT

 public:
  // write replaces the disk write of the rewritten file (tests make it fail).
  explicit CalibrationDialog(Workstation& workstation, WriteFunction write = {});

  void Command1_Click();  // Accept
  void Command2_Click();  // Cancel
  void Command3_Click();  // Modify
  void Command4_Click();  // Reset

  int rowCount() const { return static_cast<int>(atmosphere_.size()); }
  QLineEdit* atmosphere_entry(int row) const { return atmosphere_[static_cast<size_t>(row)]; }
  QLineEdit* vacuum_entry(int row) const { return vacuum_[static_cast<size_t>(row)]; }
  QString sensor_name(int row) const;
  QPushButton* button(const char* caption) const;

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  // Runs a click of the editor: the typed entries go in first, every question it then asks is
  // put to the user, and the rows show the outcome. The dialog closes when the editor is done.
  void run(const std::function<void()>& click);
  void show_rows();

  std::unique_ptr<Calibration> editor_;
  std::vector<QLabel*> names_;
  std::vector<QLineEdit*> atmosphere_;
  std::vector<QLineEdit*> vacuum_;
  std::vector<QPushButton*> buttons_;
};

}  // namespace morvane
