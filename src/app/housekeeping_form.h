// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "child_view.h"
#include "decoders/housekeeping_presenter.h"
#include "decoders/raw_mark.h"

class QLabel;
class QPushButton;
class QScrollBar;

namespace morvane {

class DrawingView;
class SensorPicker;

// Housekeeping_form: one housekeeping packet at a time, its sensor page or (complete packets
// only) its register page, with a scroll bar over the housekeeping entries. The current entry is
// the session's Current_HK_Index, shared with the summary view.
class Housekeeping_form : public ChildView {
  Q_OBJECT

 public:
  explicit Housekeeping_form(Workstation& workstation);

  // UpdateRealtime: the bar follows the newest housekeeping packet.
  void update_realtime() override;
  // Update: the summary chose Current_HK_Index; its sensor page is shown.
  void show_current_entry() override;
  // The pressure calibration changed: the sensor page is drawn again. (The AD590 setting
  // corrects only auxiliary readings.)
  void calibration_changed(CalibrationTable table) override;

  // VScroll1_Change: entry `value` on the sensor page.
  void VScroll1_Change(int value);
  // Command1_Click: switches between the sensor and the register page.
  void Command1_Click();

  bool showing_registers() const { return state_.Showing_Registers; }
  // The value label beside a static caption ("HK Packet number", "Mode", ...).
  QString header_text(const std::string& caption) const;
  QString packet_type_text() const;
  QScrollBar* scroll_bar() const { return scroll_; }
  QPushButton* more_button() const { return command1_; }
  DrawingView* picture() const { return picture_; }
  // Clicking a sensor line chooses it: its byte is marked in the raw view.
  SensorPicker* sensor_picker() const { return picker_; }

 protected:
  void wheelEvent(QWheelEvent* event) override;

 private:
  // Moves the bar; a page is drawn when the value changed or when `redraw_anyway`.
  void move_scroll(const ScrollSetting& setting, bool redraw_anyway);
  void show_sensor_page(const SensorPage& page);
  // The packet on view for the raw view, with the chosen sensor's byte; nothing when none is drawn.
  std::optional<RawMark> shown_mark() const;

  HousekeepingPresenter state_;
  QLabel* packet_type_;
  std::map<std::string, QLabel*> header_;
  QScrollBar* scroll_;
  DrawingView* picture_;
  QPushButton* command1_;
  SensorPicker* picker_;
  bool page_shown_ = false;
};

}  // namespace morvane
