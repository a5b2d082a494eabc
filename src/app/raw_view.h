// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>

#include "child_view.h"
#include "views/raw_mark.h"

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
  void updateRealtime() override;
  // Shows frame n (the scroll bar moves there).
  void showFrame(int32_t n);
  int32_t currentFrame() const { return current_frame_; }

  // Shows the frame a decoded view sent with its packet (and chosen byte) marked; the mark stays
  // while the frames are stepped through, so a packet's end is marked in the next frame.
  void showMark(const Raw_Mark& mark);
  void clearMark();
  const std::optional<Raw_Mark>& mark() const { return mark_; }

  QString countLabel() const;
  QString frameLabel() const;
  QScrollBar* scrollBar() const { return scroll_; }
  DrawingView* picture() const { return picture_; }

 protected:
  void wheelEvent(QWheelEvent* event) override;

 private:
  void setFrameRange();
  // VScroll1_Change: the frame of the scroll bar, its label and its words.
  void VScroll1_Change(int value);
  void drawFrame();
  void paintMark();

  QLabel* label1_;
  QLabel* label2_;
  QScrollBar* scroll_;
  DrawingView* picture_;
  int32_t current_frame_ = 1;
  std::optional<Raw_Mark> mark_;
};

}  // namespace morvane
