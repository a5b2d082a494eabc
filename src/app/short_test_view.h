// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <vector>

#include "child_view.h"
#include "functest/short_test_evaluation.h"
#include "functest/short_test_report.h"

class QGridLayout;
class QLabel;
class QPushButton;
class QTabWidget;

namespace morvane {

class TelemetryFile;

// ShortTest: the evaluation of the short form test that starts at the session's
// Current_Science_Index, in its Test_Mode, against the limit file of the file's type and mode.
// Eight tabs hold every cell as the evaluation gives it, a failing cell pure red; the summary
// tab rolls the items up by sub-system and says which packets were missing. The evaluation is
// made once, when the window opens; "Print..." and "Save report..." give the printable report.
class ShortTest : public ChildView {
  Q_OBJECT

 public:
  // Evaluates the test; a missing or short limit file or an unknown mode fails the opening.
  explicit ShortTest(Workstation& workstation);

  const ShortTestEvaluation& evaluation() const { return test_; }
  // The test's line in the selection list and the lines of that list, for the report heading.
  void set_list_position(int32_t line, int32_t count);
  // The report of the test as shown.
  TestReport report();

  // "Print...": the report on a printer the user sets up.
  void print_report();
  // "Save report...": the report in a file the user names: PDF for .pdf, HTML for .html or
  // .htm, plain text otherwise.
  void save_report();
  // Writes the report to path, in the format its extension names. A file that cannot be
  // written is a RuntimeError naming it.
  void write_report(const QString& path);

  QTabWidget* tabs() const { return tabs_; }
  // A cell by its control name and index ("Label7", 9), or nullptr.
  QLabel* cell(const char* name, int index) const;
  QLabel* start_label() const { return start_label_; }
  QLabel* mode_title() const { return mode_title_; }
  QLabel* overall_result() const { return overall_; }
  QLabel* packet_message() const { return packet_message_; }
  QPushButton* print_button() const { return print_; }
  QPushButton* save_button() const { return save_; }

 private:
  QWidget* make_sensor_tab();
  QWidget* make_current_tab(const char* item_heading, const char* names, const char* rise_28v, const char* rise_5v,
                          const char* result, const std::vector<ItemRow>& rows);
  QWidget* make_heated_tab(const char* item_heading, const std::vector<ItemRow>& rows, int first_index);
  QWidget* make_summary_tab();
  QLabel* add_cell(QGridLayout* grid, QWidget* page, int row, int column, const char* name, int index,
                  const Cell& cell, Qt::Alignment alignment);

  ShortTestEvaluation test_;
  TestReportSource source_;
  std::weak_ptr<const TelemetryFile> evaluated_file_;
  QLabel* start_label_ = nullptr;
  QLabel* mode_title_ = nullptr;
  QTabWidget* tabs_ = nullptr;
  QLabel* overall_ = nullptr;
  QLabel* packet_message_ = nullptr;
  QPushButton* print_ = nullptr;
  QPushButton* save_ = nullptr;
};

}  // namespace morvane
