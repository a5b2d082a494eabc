// SPDX-License-Identifier: MIT
#include "sensor_picker.h"

#include <QMouseEvent>

#include "drawing_view.h"

namespace morvane {

namespace {

constexpr Colour kChosenLineColour{200, 222, 255};

}  // namespace

SensorPicker::SensorPicker(DrawingView& page, std::function<void(int sensor)> chosen)
    : QObject(&page), page_(page), chosen_(std::move(chosen)) {
  page_.installEventFilter(this);
}

void SensorPicker::set_lines(std::vector<SensorLine> lines) {
  lines_ = std::move(lines);
  picked_ = -1;
}

void SensorPicker::pick_at(const QPoint& pixels) {
  const QPoint twips = page_.pixels_to_twips(pixels);
  picked_ = sensor_line_at(lines_, twips.x(), twips.y());
  if (picked_ < 0) {
    page_.set_marks({});
    return;
  }
  const TwipsBox box = sensor_line_box(lines_[static_cast<size_t>(picked_)]);
  page_.set_marks({}, {{box.x, box.y, box.width, box.height, kChosenLineColour}});
  if (chosen_) chosen_(sensor());
}

int SensorPicker::sensor() const { return picked_ < 0 ? 0 : lines_[static_cast<size_t>(picked_)].sensor; }

bool SensorPicker::eventFilter(QObject* watched, QEvent* event) {
  if (watched == &page_ && event->type() == QEvent::MouseButtonPress) {
    const auto* press = static_cast<QMouseEvent*>(event);
    if (press->button() == Qt::LeftButton) pick_at(press->position().toPoint());
  }
  return QObject::eventFilter(watched, event);
}

}  // namespace morvane
