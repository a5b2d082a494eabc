// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <vector>

#include "child_view.h"
#include "export/export_presenter.h"

class QButtonGroup;
class QCheckBox;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace morvane {

// The export dialog an export window shows, and back.
ExportKind export_kind_of(ViewKind kind);
ViewKind view_kind_of(ExportKind kind);

// Export_HK, Export_Aux, Export_DS_Cal and Export_Spectra: one window, shaped by its kind, around
// the ExportPresenter that holds their logic. Export validates the range, asks for the file
// (delimited text, or a workbook by the .xlsx file type), writes it with a progress dialog whose
// Cancel keeps the lines written so far, and stays open.
class ExportForm : public ChildView {
  Q_OBJECT

 public:
  ExportForm(Workstation& workstation, ViewKind kind);

  // All: the range boxes show "1" and the limit and are disabled; cleared, they are enabled.
  void Check2_Click();
  // Export: every failure on the way is a message; a cancelled file choice ends silently.
  void Command1_Click();
  // Cancel: the window closes, nothing is written.
  void Command2_Click();

  QLineEdit* from_field() const { return text1_; }
  QLineEdit* to_field() const { return text2_; }
  QCheckBox* all_box() const { return check2_; }
  // Option1..Option3.
  QRadioButton* delimiter_option(int index) const;
  // Option4 onwards.
  QRadioButton* format_option(int index) const;
  int format_count() const;
  // The housekeeping sensor boxes (Check1), sensor s at s - 1; none in the other dialogs.
  const std::vector<QCheckBox*>& sensor_boxes() const { return check1_; }
  // The auxiliary dialog's AD590 temperature entry; nullptr in the others.
  QLineEdit* ad590Field() const { return ad590_; }
  QPushButton* export_button() const { return command1_; }
  QPushButton* cancel_button() const { return command2_; }

 private:
  QWidget* make_range_frame();
  QWidget* make_delimiter_frame();
  QWidget* make_format_frame();
  QWidget* make_sensor_frame();
  // The dialog's state in the controls, and the controls' choices in a dialog.
  void show_dialog();
  void apply_choices(ExportPresenter& dialog) const;
  void update_ad590_field();
  void export_to_file();
  void write_with_progress(const ExportRequest& request, ExportOutput& output);

  ExportKind export_kind_;
  std::unique_ptr<ExportPresenter> dialog_;
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
