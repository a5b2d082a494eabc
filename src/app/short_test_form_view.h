// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "child_view.h"

class QLineEdit;
class QPushButton;

namespace morvane {

// TestForm: converts a sensor number and a voltage typed by hand as every view converts its
// readings, showing the engineering value and its unit.
class TestForm : public ChildView {
  Q_OBJECT

 public:
  explicit TestForm(Workstation& workstation);

  // The button: converts Text1 and Text2 into Text4 and Text5. A sensor number that is not a
  // whole 16-bit number, or a voltage that is not a number, is reported and changes nothing.
  void Command1_Click();

  QLineEdit* sensor_field() const { return text1_; }
  QLineEdit* voltage_field() const { return text2_; }
  QLineEdit* value_field() const { return text4_; }
  QLineEdit* unit_field() const { return text5_; }
  QPushButton* convert_button() const { return command1_; }

 private:
  void Form_Load();

  // The voltage the form pre-fills Text2 with; 0 when the form is made.
  int32_t kept_voltage_ = 0;
  QLineEdit* text1_;
  QLineEdit* text2_;
  QLineEdit* text4_;
  QLineEdit* text5_;
  QPushButton* command1_;
};

}  // namespace morvane
