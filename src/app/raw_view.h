// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>

#include "child_view.h"
#include "decoders/raw_mark.h"

class QLabel;
class QScrollBar;

namespace morvane {

class DrawingView;

// One whole frame of the loaded file as hexadecimal words (ZEB: one record's items), stepped
// through frames 1..Packet_Count with the scroll bar, independently of the catalogue. The
// scroll bar takes every frame a file can have, each reachable one step at a time.
class RawData : public ChildView {
  Q_OBJECT

 public:
  explicit RawData(Workstation& workstation);

  // UpdateRawData: the count again, and the newest frame.
  void update_realtime() override;
  // Shows frame n (the scroll bar moves there).
  void show_frame(int32_t n);
  int32_t current_frame() const { return current_frame_; }

  // Shows the frame a decoded view sent with its packet (and chosen byte) marked; the mark stays
  // while the frames are stepped through, so a packet's end is marked in the next frame.
  void show_mark(const RawMark& mark);
  void clear_mark();
  const std::optional<RawMark>& mark() const { return mark_; }

  QString count_label() const;
  QString frame_label() const;
  QScrollBar* scroll_bar() const { return scroll_; }
  DrawingView* picture() const { return picture_; }

 protected:
  void wheelEvent(QWheelEvent* event) override;

 private:
  void set_frame_range();
  // VScroll1_Change: the frame of the scroll bar, its label and its words.
  void VScroll1_Change(int value);
  void draw_frame();
  void paint_mark();

  QLabel* label1_;
  QLabel* label2_;
  QScrollBar* scroll_;
  DrawingView* picture_;
  int32_t current_frame_ = 1;
  std::optional<RawMark> mark_;
};

}  // namespace morvane
