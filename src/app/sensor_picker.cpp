// SPDX-License-Identifier: MIT
#include "sensor_picker.h"

#include <QMouseEvent>

#include "drawing_view.h"

namespace morvane {

namespace {

constexpr Colour kChosenLineColour{200, 222, 255};

}  // namespace

Sensor_Picker::Sensor_Picker(DrawingView& page, std::function<void(int sensor)> chosen)
    : QObject(&page), page_(page), chosen_(std::move(chosen)) {
  page_.installEventFilter(this);
}

void Sensor_Picker::setLines(std::vector<Sensor_Line> lines) {
  lines_ = std::move(lines);
  picked_ = -1;
}

void Sensor_Picker::pickAt(const QPoint& pixels) {
  const QPoint twips = page_.pixelsToTwips(pixels);
  picked_ = sensor_line_at(lines_, twips.x(), twips.y());
  if (picked_ < 0) {
    page_.setMarks({});
    return;
  }
  const Twips_Box box = sensor_line_box(lines_[static_cast<size_t>(picked_)]);
  page_.setMarks({}, {{box.x, box.y, box.width, box.height, kChosenLineColour}});
  if (chosen_) chosen_(sensor());
}

int Sensor_Picker::sensor() const { return picked_ < 0 ? 0 : lines_[static_cast<size_t>(picked_)].sensor; }

bool Sensor_Picker::eventFilter(QObject* watched, QEvent* event) {
  if (watched == &page_ && event->type() == QEvent::MouseButtonPress) {
    const auto* press = static_cast<QMouseEvent*>(event);
    if (press->button() == Qt::LeftButton) pickAt(press->position().toPoint());
  }
  return QObject::eventFilter(watched, event);
}

}  // namespace morvane
