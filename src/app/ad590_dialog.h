// SPDX-License-Identifier: MIT
#pragma once

#include "calibration/ad590_setting.h"
#include "child_view.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace morvane {

// AD590_Cal: the AD590 temperature the auxiliary view's thermocouple channels are corrected by.
// Accept stores it (as its N-type voltage) and an open auxiliary view redraws at once; Cancel
// and the window's close button change nothing.
class AD590Dialog : public ChildView {
  Q_OBJECT

 public:
  explicit AD590Dialog(Workstation& workstation);

  // Accept: a numeric entry becomes the setting, anything else is ignored; the dialog closes.
  void Command1_Click();
  // Cancel: the dialog closes.
  void Command2_Click();

  QLineEdit* temperature_entry() const { return text1_; }
  QPushButton* accept_button() const { return command1_; }
  QPushButton* cancel_button() const { return command2_; }

 protected:
  void showEvent(QShowEvent* event) override;

 private:

  AD590_Cal setting_;
  QLineEdit* text1_;
  QPushButton* command1_;
  QPushButton* command2_;
  bool placed_ = false;
};

}  // namespace morvane
