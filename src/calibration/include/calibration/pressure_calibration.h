// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "core/safe_file.h"
#include "core/configuration.h"

namespace morvane {

// The editor's fixed texts.
inline constexpr const char* kCalibrationCaption = "Calibration";
inline constexpr const char* kCalibrationGroupCaption = "Pressure Sensors";
inline constexpr const char* kCalibrationColumnCaptions[] = {"Sensor", "Atmosphere reading (mV)", "Vacuum reading (mV)"};
inline constexpr const char* kAcceptButton = "Accept";
inline constexpr const char* kCancelButton = "Cancel";
inline constexpr const char* kModifyButton = "Modify";
inline constexpr const char* kResetButton = "Reset";
inline constexpr const char* kModifyExplanation = "Click to modify pressure sensor calibration";
inline constexpr const char* kResetExplanation =
    "Click to reset pressure sensor calibration to maufactureers default values";  // the misspelling is the instrument team's
inline constexpr const char* kModifyWarning =
    "Warning - modifying the pressure sensor calibration will alter the display of the pressure sensor values";
inline constexpr const char* kAcceptQuestion =
    "Are you sure that you want to change the pressure sensor calibration values";
// The rows of the editor lie this far apart, in twips.
inline constexpr int kCalibrationRowSpacing = 400;

// A calibration reading as the editor shows it: blanks, then the value in "#0.0000". Six blanks
// up to 1 in size, two fewer for each further power of ten (6 - 2 x Int(log10(|v| + 0.000001))),
// one fewer again for a negative value; values too large for any blank get none.
std::string padded_display(double value);

// The pressure-sensor file as the editor writes it: the count written as a number (" 5"), then
// one line per record: "22, 1234.5,  56.25" (number, the atmosphere reading's shortest text,
// the vacuum reading written as a number). Lines end in CR LF like the other configuration files.
std::string pressure_file_text(const std::vector<PressureRecord>& table);

// The pressure sensor calibration editor without its window. The view builds one when it opens,
// shows rows(), forwards its button clicks and the user's typing, asks question() whenever one is
// pending and passes the answer to answer(), and closes once closed() is true.
class Calibration {
 public:
  enum class Question {
    None,
    Modify,  // kModifyWarning, OK / Cancel
    Reset,   // kModifyWarning, OK / Cancel
    Accept,  // kAcceptQuestion, Yes / No
  };
  struct Row {
    std::string sensor_name;
    std::string atmosphere_text;  // Text2
    std::string vacuum_text;      // Text3
    bool has_record = true;       // false once a default table with fewer records was loaded
  };

  // Form_Load: one row per pressure record, named after its sensor, entries disabled. A record
  // whose sensor number is not in the sensor table is "Subscript out of range". write replaces
  // the disk write of the file (tests).
  explicit Calibration(Configuration& config, WriteFunction write = {});

  const std::vector<Row>& rows() const { return rows_; }
  bool entries_enabled() const { return entries_enabled_; }
  bool Calibration_Modified() const { return modified_; }
  bool closed() const { return closed_; }
  Question question() const { return question_; }
  // The pending question's text and whether its buttons are Yes / No (else OK / Cancel).
  const char* question_text() const;
  bool question_is_yes_no() const { return question_ == Question::Accept; }

  // The user's typing into row i (0-based).
  void set_atmosphere_text(size_t row, std::string text);
  void set_vacuum_text(size_t row, std::string text);

  // Accept: closes at once when nothing was modified, otherwise asks kAcceptQuestion.
  void Command1_Click();
  // Cancel: re-reads the saved file into the table (edits in memory are dropped) and closes.
  void Command2_Click();
  // Modify and Reset: ask kModifyWarning.
  void Command3_Click();
  void Command4_Click();
  // The answer to the pending question: true for OK or Yes.
  //  Modify, OK: modified, entries enabled. Cancel: the table is re-read from the saved file.
  //  Reset, OK: modified, the table (and its size) from the defaults file, the rows refilled.
  //  Accept, Yes: numeric entries go into the table (others are ignored), the file is rewritten
  //  safely, closed. No: closed without writing.
  // A failing read or write throws the RuntimeError and leaves the dialog open.
  void answer(bool affirmative);

 private:
  void refill_rows();
  void apply_entries();
  std::string pressure_path() const;

  Configuration& config_;
  WriteFunction write_;
  std::vector<Row> rows_;
  bool entries_enabled_ = false;
  bool modified_ = false;
  bool closed_ = false;
  Question question_ = Question::None;
};

}  // namespace morvane
