// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "child_view.h"
#include "decoders/auxiliary_presenter.h"

class QLabel;
class QScrollBar;

namespace morvane {

class DrawingView;
class TelemetryFile;

// Shown instead of the table when there is nothing to step through.
inline constexpr const char* kNoFileNotice = "Please load an EGSE data file";
inline constexpr const char* kNoAuxiliaryNotice = "The EGSE data file contains no auxiliary data packets";

// Auxiliary_form: one auxiliary data packet at a time as a table of its channel readings, with a
// scroll bar over the auxiliary packets only. It opens on the packet the summary made current
// (Current_Science_Index), or the first.
class Auxiliary_form : public ChildView {
  Q_OBJECT

 public:
  explicit Auxiliary_form(Workstation& workstation);

  // The summary chose an auxiliary entry: the view opens again on it.
  void show_current_entry() override;
  // The AD590 temperature or the pressure calibration changed: the AD590 label and the packet
  // shown follow at once.
  void calibration_changed(CalibrationTable table) override;

  // VScroll1_Change: auxiliary packet `value` (1-based).
  void VScroll1_Change(int value);

  int32_t current_aux_number() const { return state_.Current_Aux_Number; }
  // The value label beside a caption ("Aux Data number", "AD590 compensation temperature", ...;
  // "Sensor readings" gives the number of readings).
  QString label_text(const std::string& caption) const;
  // What is shown instead of the table, or an empty text.
  QString notice() const;
  QScrollBar* scroll_bar() const { return scroll_; }
  DrawingView* picture() const { return picture_; }

 protected:
  void wheelEvent(QWheelEvent* event) override;

 private:
  // Form_Load: the index of auxiliary packets, the bar, the labels and the current packet.
  void open();
  void show_packet();
  void show_notice(const char* text);
  // Whether the packet shown is this entry of the science list.
  bool shows(int32_t science_index) const;
  // The view was opened on a file that is no longer the loaded one.
  bool file_replaced() const;

  AuxiliaryPresenter state_;
  std::weak_ptr<TelemetryFile> file_;
  QLabel* notice_;
  QLabel* aux_number_;
  QLabel* sequence_;
  QLabel* lander_time_;
  QLabel* packet_count_;
  QLabel* ad590_;
  QLabel* channel_count_;
  QScrollBar* scroll_;
  DrawingView* picture_;
};

}  // namespace morvane
