// SPDX-License-Identifier: MIT
#include "calibration/pressure_calibration.h"

#include <algorithm>
#include <cmath>

#include "core/arithmetic.h"
#include "core/free_format_reader.h"
#include "core/number_text.h"
#include "core/windows_path.h"

namespace morvane {

std::string padded_display(double value) {
  const double size = std::fabs(value);
  // The factor 2 and the 0.000001 only roughly right-align the values in a proportional font.
  double pad = size <= 1 ? 6 : 6 - 2 * int_part(std::log10(size + 0.000001));
  if (value < 0) pad -= 1;
  return std::string(static_cast<size_t>(std::max(pad, 0.0)), ' ') + format_pattern(value, "#0.0000");
}

std::string pressure_file_text(const std::vector<PressureRecord>& table) {
  std::string text = number_text(static_cast<double>(table.size())) + "\r\n";
  for (const auto& record : table) {
    text += std::to_string(record.Sensor_Number) + ", " + general_text(record.C1) + ", " + number_text(record.C2) + "\r\n";
  }
  return text;
}

Calibration::Calibration(Configuration& config, WriteFunction write) : config_(config), write_(std::move(write)) {
  for (const auto& record : config_.Pressure_Table) {
    rows_.push_back(Row{config_.sensor(record.Sensor_Number).Sensor_Name, padded_display(record.C1),
                        padded_display(record.C2)});
  }
}

const char* Calibration::question_text() const {
  switch (question_) {
    case Question::Modify:
    case Question::Reset: return kModifyWarning;
    case Question::Accept: return kAcceptQuestion;
    case Question::None: break;
  }
  return "";
}

void Calibration::set_atmosphere_text(size_t row, std::string text) { rows_.at(row).atmosphere_text = std::move(text); }
void Calibration::set_vacuum_text(size_t row, std::string text) { rows_.at(row).vacuum_text = std::move(text); }

std::string Calibration::pressure_path() const { return config_path(config_.Egse_Path, kPressureFile); }

void Calibration::Command1_Click() {
  if (modified_) {
    question_ = Question::Accept;
  } else {
    closed_ = true;
  }
}

void Calibration::Command2_Click() {
  reread_pressure_table(pressure_path(), config_.Pressure_Table);
  closed_ = true;
}

void Calibration::Command3_Click() { question_ = Question::Modify; }
void Calibration::Command4_Click() { question_ = Question::Reset; }

void Calibration::answer(bool affirmative) {
  const Question asked = question_;
  question_ = Question::None;
  switch (asked) {
    case Question::None: return;
    case Question::Modify:
      if (affirmative) {
        modified_ = true;
        entries_enabled_ = true;
      } else {
        // The saved values replace the table; the entries keep what they show.
        reread_pressure_table(pressure_path(), config_.Pressure_Table);
      }
      return;
    case Question::Reset:
      if (affirmative) {
        // Held in memory only: the file changes when Accept is confirmed.
        config_.Pressure_Table = read_pressure_table(config_path(config_.Egse_Path, kDefaultPressureFile));
        modified_ = true;
        refill_rows();
      }
      return;
    case Question::Accept:
      if (affirmative) {
        apply_entries();
        replace_file(pressure_path(), pressure_file_text(config_.Pressure_Table), write_);
      }
      closed_ = true;
      return;
  }
}

void Calibration::refill_rows() {
  // The rows stay those built at opening; rows beyond a shorter default table show nothing.
  for (size_t i = 0; i < rows_.size(); ++i) {
    Row& row = rows_[i];
    row.has_record = i < config_.Pressure_Table.size();
    row.atmosphere_text = row.has_record ? padded_display(config_.Pressure_Table[i].C1) : "";
    row.vacuum_text = row.has_record ? padded_display(config_.Pressure_Table[i].C2) : "";
  }
}

void Calibration::apply_entries() {
  const size_t count = std::min(rows_.size(), config_.Pressure_Table.size());
  for (size_t i = 0; i < count; ++i) {
    double value = 0;
    // A non-numeric entry leaves its value as it was, silently.
    if (parse_number(rows_[i].atmosphere_text, value)) config_.Pressure_Table[i].C1 = value;
    if (parse_number(rows_[i].vacuum_text, value)) config_.Pressure_Table[i].C2 = value;
  }
}

}  // namespace morvane
