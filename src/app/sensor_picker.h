// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <vector>

#include <QObject>

#include "decoders/hk_sensors.h"

namespace morvane {

class DrawingView;

// Lets the user choose a line of a sensor page by clicking it: the line is marked on the page and
// the window is told which sensor was chosen. A new page, or a page without sensor lines,
// chooses none.
class SensorPicker : public QObject {
  Q_OBJECT

 public:
  SensorPicker(DrawingView& page, std::function<void(int sensor)> chosen);

  // A sensor page was drawn with these lines; none is chosen.
  void set_lines(std::vector<SensorLine> lines);
  // What is drawn has no sensor lines (the register page, nothing).
  void clear() { set_lines({}); }
  // Chooses the line under a point of the page (pixels); a point on no line chooses none.
  void pick_at(const QPoint& pixels);
  // The chosen sensor's number, 0 when none is chosen.
  int sensor() const;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  DrawingView& page_;
  std::function<void(int)> chosen_;
  std::vector<SensorLine> lines_;
  int picked_ = -1;  // index in lines_
};

}  // namespace morvane
