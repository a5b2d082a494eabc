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

void DrawingView::set_drawing(Drawing drawing) {
  drawing_ = std::move(drawing);
  text_marks_.clear();
  box_marks_.clear();
  place_texts();
  update();
}

void DrawingView::set_marks(std::vector<TextMark> text_marks, std::vector<BoxMark> box_marks) {
  text_marks_ = std::move(text_marks);
  box_marks_ = std::move(box_marks);
  place_marks();
  update();
}

QPoint DrawingView::pixels_to_twips(const QPoint& pixels) const {
  return {morvane::pixels_to_twips(pixels.x(), logicalDpiX()), morvane::pixels_to_twips(pixels.y(), logicalDpiY())};
}

void DrawingView::set_surface_twips(int width, int height) {
  width_twips_ = width;
  height_twips_ = height;
  updateGeometry();
}

QSize DrawingView::sizeHint() const {
  const QPoint size = twips_to_pixels(width_twips_, height_twips_, *this);
  return {size.x(), size.y()};
}

void DrawingView::place_texts() {
  const QFontMetrics metrics(font());
  rects_.clear();
  rects_.reserve(drawing_.size());
  int follow_x = 0;  // where the previous text ended, for texts that continue it
  for (const PlacedText& text : drawing_) {
    const QString string = QString::fromStdString(text.text);
    const int width = metrics.horizontalAdvance(string);
    const QPoint at = twips_to_pixels(text.x, text.y, *this);
    int left = at.x();
    if (text.anchor == Anchor::Right) left -= width;
    if (text.anchor == Anchor::Follow) left = follow_x;
    rects_.emplace_back(left, at.y(), width, metrics.height());
    follow_x = left + width;
  }
  place_marks();
}

void DrawingView::place_marks() {
  const QFontMetrics metrics(font());
  mark_rects_.clear();
  for (const TextMark& mark : text_marks_) {
    if (mark.text >= drawing_.size()) {
      mark_rects_.emplace_back();  // no such text: nothing to paint
      continue;
    }
    const QString text = QString::fromStdString(drawing_[mark.text].text);
    const QRect& whole = rects_[mark.text];
    const int left = whole.left() + metrics.horizontalAdvance(text.left(mark.first_char));
    mark_rects_.emplace_back(left, whole.top(), metrics.horizontalAdvance(text.mid(mark.first_char, mark.char_count)),
                             whole.height());
  }
  for (const BoxMark& box : box_marks_) {
    const QPoint top_left = twips_to_pixels(box.x, box.y, *this);
    const QPoint bottom_right = twips_to_pixels(box.x + box.width, box.y + box.height, *this);
    mark_rects_.emplace_back(top_left, QSize(bottom_right.x() - top_left.x(), bottom_right.y() - top_left.y()));
  }
}

void DrawingView::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  painter.setFont(font());
  const int ascent = QFontMetrics(font()).ascent();
  painted_ = 0;
  // The marks lie behind the texts, the later ones over the earlier.
  const size_t text_marks = text_marks_.size();
  for (size_t i = 0; i < mark_rects_.size(); ++i) {
    if (!event->rect().intersects(mark_rects_[i])) continue;
    const Colour& c = i < text_marks ? text_marks_[i].colour : box_marks_[i - text_marks].colour;
    painter.fillRect(mark_rects_[i], QColor(c.red, c.green, c.blue));
  }
  for (size_t i = 0; i < drawing_.size(); ++i) {
    if (!event->rect().intersects(rects_[i])) continue;
    const PlacedText& text = drawing_[i];
    painter.setPen(QColor(text.colour.red, text.colour.green, text.colour.blue));
    painter.drawText(rects_[i].left(), rects_[i].top() + ascent, QString::fromStdString(text.text));
    ++painted_;
  }
}

void DrawingView::changeEvent(QEvent* event) {
  if (event->type() == QEvent::FontChange) place_texts();
  QWidget::changeEvent(event);
}

}  // namespace morvane
