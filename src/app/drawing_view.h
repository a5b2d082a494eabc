// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include <QRect>
#include <QWidget>

#include "decoders/drawing.h"

namespace morvane {

// A drawing surface for the positioned texts a decoder returns: twips mapped to the screen's
// pixels, each text's top at its y. The place of every text is worked out once per drawing, so
// painting draws only the texts the exposed area touches. Every decoded view can use it.
class DrawingView : public QWidget {
  Q_OBJECT

 public:
  explicit DrawingView(QWidget* parent = nullptr);

  // Areas painted behind the texts (a packet's words in the raw view, a chosen sensor line):
  // characters of one text of the drawing, or a box in twips.
  struct TextMark {
    size_t text = 0;  // index in the drawing
    int first_char = 0;
    int char_count = 0;
    Colour colour;
  };
  struct BoxMark {
    int x = 0, y = 0, width = 0, height = 0;  // twips
    Colour colour;
  };

  // Replaces what is drawn, without marks, and repaints.
  void set_drawing(Drawing drawing);
  const Drawing& drawing() const { return drawing_; }
  void clear() { set_drawing({}); }

  // The size of the surface in twips; it becomes the widget's size hint.
  void set_surface_twips(int width, int height);

  // Where each text of the drawing lands, in pixels of this widget.
  const std::vector<QRect>& text_rects() const { return rects_; }
  // Texts drawn by the last paint (how much of the drawing the exposed area needed).
  int texts_painted() const { return painted_; }

  // Replaces the marks; a new drawing clears them.
  void set_marks(std::vector<TextMark> text_marks, std::vector<BoxMark> box_marks = {});
  const std::vector<TextMark>& text_marks() const { return text_marks_; }
  const std::vector<BoxMark>& box_marks() const { return box_marks_; }
  // Where the marks land, in pixels: the text marks, then the boxes.
  const std::vector<QRect>& mark_rects() const { return mark_rects_; }
  // The point of this widget (pixels) in twips of the surface.
  QPoint pixels_to_twips(const QPoint& pixels) const;

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void place_texts();
  void place_marks();

  Drawing drawing_;
  std::vector<QRect> rects_;
  std::vector<TextMark> text_marks_;
  std::vector<BoxMark> box_marks_;
  std::vector<QRect> mark_rects_;
  int width_twips_ = 0;
  int height_twips_ = 0;
  int painted_ = 0;
};

}  // namespace morvane
