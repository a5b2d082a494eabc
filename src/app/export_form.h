// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <vector>

#include "child_view.h"
#include "export/export_dialog.h"

class QButtonGroup;
class QCheckBox;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace morvane {

// The export dialog an export window shows, and back.
Export_Kind export_kind_of(ViewKind kind);
ViewKind view_kind_of(Export_Kind kind);

// Export_HK, Export_Aux, Export_DS_Cal and Export_Spectra: one window, shaped by its kind, around
// the Export_Dialog that holds their logic. Export validates the range, asks for the file
// (delimited text, or a workbook by the .xlsx file type), writes it with a progress dialog whose
// Cancel keeps the lines written so far, and stays open.
class Export_Form : public ChildView {
  Q_OBJECT

 public:
  Export_Form(Workstation& workstation, ViewKind kind);

  // All: the range boxes show "1" and the limit and are disabled; cleared, they are enabled.
  void Check2_Click();
  // Export: every failure on the way is a message; a cancelled file choice ends silently.
  void Command1_Click();
  // Cancel: the window closes, nothing is written.
  void Command2_Click();

  QLineEdit* fromField() const { return text1_; }
  QLineEdit* toField() const { return text2_; }
  QCheckBox* allBox() const { return check2_; }
  // Option1..Option3.
  QRadioButton* delimiterOption(int index) const;
  // Option4 onwards.
  QRadioButton* formatOption(int index) const;
  int formatCount() const;
  // The housekeeping sensor boxes (Check1), sensor s at s - 1; none in the other dialogs.
  const std::vector<QCheckBox*>& sensorBoxes() const { return check1_; }
  // The auxiliary dialog's AD590 temperature entry; nullptr in the others.
  QLineEdit* ad590Field() const { return ad590_; }
  QPushButton* exportButton() const { return command1_; }
  QPushButton* cancelButton() const { return command2_; }

 private:
  QWidget* makeRangeFrame();
  QWidget* makeDelimiterFrame();
  QWidget* makeFormatFrame();
  QWidget* makeSensorFrame();
  // The dialog's state in the controls, and the controls' choices in a dialog.
  void showDialog();
  void applyChoices(Export_Dialog& dialog) const;
  void updateAD590Field();
  void exportToFile();
  void writeWithProgress(const Export_Request& request, Export_Output& output);

  Export_Kind export_kind_;
  std::unique_ptr<Export_Dialog> dialog_;
  QLineEdit* text1_ = nullptr;
  QLineEdit* text2_ = nullptr;
  QCheckBox* check2_ = nullptr;
  QButtonGroup* delimiters_ = nullptr;
  QButtonGroup* formats_ = nullptr;
  std::vector<QCheckBox*> check1_;
  QLineEdit* ad590_ = nullptr;
  QPushButton* command1_ = nullptr;
  QPushButton* command2_ = nullptr;
};

}  // namespace morvane
