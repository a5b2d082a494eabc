// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>

#include "child_view.h"
#include "decoders/concise_frame.h"

class QLabel;
class QPushButton;
class QScrollBar;

namespace morvane {

// Concise_Form: the type of each source packet in one frame, in eight slots, with a scroll
// bar over the frames and a button that pauses and resumes real-time collection.
class Concise_Form : public ChildView {
  Q_OBJECT

 public:
  explicit Concise_Form(Workstation& workstation);

  // Update_Concise_Form: the newest frame.
  void update_realtime() override;
  // Fills the eight slots for a frame.
  void Show_Lander_Packet(int32_t frame);
  // Command1: pauses collection's passes ("Continue") or lets them run again ("Pause").
  void Command1_Click();

  QString slot_text(int k) const;
  QString frame_text() const;
  QPushButton* pause_button() const { return command1_; }
  QScrollBar* scroll_bar() const { return scroll_; }

 private:
  void set_frame_range(int32_t last);

  std::array<QLabel*, kConciseSlots> slots_{};
  QLabel* frame_label_;
  QScrollBar* scroll_;
  QPushButton* command1_;
};

}  // namespace morvane
