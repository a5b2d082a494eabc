// SPDX-License-Identifier: MIT
#include "drawing_view.h"

#include <QEvent>
#include <QFontMetrics>
#include <QPaintEvent>
#include <QPainter>

#include "twips.h"

namespace morvane {

DrawingView::DrawingView(QWidget* parent) : QWidget(parent) {
  setAutoFillBackground(true);
  QPalette surface = palette();
  surface.setColor(QPalette::Window, Qt::white);
  setPalette(surface);
}

void DrawingView::setDrawing(Drawing drawing) {
  drawing_ = std::move(drawing);
  placeTexts();
  update();
}

void DrawingView::setSurfaceTwips(int width, int height) {
  width_twips_ = width;
  height_twips_ = height;
  updateGeometry();
}

QSize DrawingView::sizeHint() const {
  const QPoint size = twips_to_pixels(width_twips_, height_twips_, *this);
  return {size.x(), size.y()};
}

void DrawingView::placeTexts() {
  const QFontMetrics metrics(font());
  rects_.clear();
  rects_.reserve(drawing_.size());
  int follow_x = 0;  // where the previous text ended, for texts that continue it
  for (const Placed_Text& text : drawing_) {
    const QString string = QString::fromStdString(text.text);
    const int width = metrics.horizontalAdvance(string);
    const QPoint at = twips_to_pixels(text.x, text.y, *this);
    int left = at.x();
    if (text.anchor == Anchor::Right) left -= width;
    if (text.anchor == Anchor::Follow) left = follow_x;
    rects_.emplace_back(left, at.y(), width, metrics.height());
    follow_x = left + width;
  }
}

void DrawingView::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  painter.setFont(font());
  const int ascent = QFontMetrics(font()).ascent();
  painted_ = 0;
  for (size_t i = 0; i < drawing_.size(); ++i) {
    if (!event->rect().intersects(rects_[i])) continue;
    const Placed_Text& text = drawing_[i];
    painter.setPen(QColor(text.colour.red, text.colour.green, text.colour.blue));
    painter.drawText(rects_[i].left(), rects_[i].top() + ascent, QString::fromStdString(text.text));
    ++painted_;
  }
}

void DrawingView::changeEvent(QEvent* event) {
  if (event->type() == QEvent::FontChange) placeTexts();
  QWidget::changeEvent(event);
}

}  // namespace morvane
