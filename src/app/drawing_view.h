// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include <QRect>
#include <QWidget>

#include "views/drawing.h"

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
  struct Text_Mark {
    size_t text = 0;  // index in the drawing
    int first_char = 0;
    int char_count = 0;
    Colour colour;
  };
  struct Box_Mark {
    int x = 0, y = 0, width = 0, height = 0;  // twips
    Colour colour;
  };

  // Replaces what is drawn, without marks, and repaints.
  void setDrawing(Drawing drawing);
  const Drawing& drawing() const { return drawing_; }
  void clear() { setDrawing({}); }

  // The size of the surface in twips; it becomes the widget's size hint.
  void setSurfaceTwips(int width, int height);

  // Where each text of the drawing lands, in pixels of this widget.
  const std::vector<QRect>& textRects() const { return rects_; }
  // Texts drawn by the last paint (how much of the drawing the exposed area needed).
  int textsPainted() const { return painted_; }

  // Replaces the marks; a new drawing clears them.
  void setMarks(std::vector<Text_Mark> text_marks, std::vector<Box_Mark> box_marks = {});
  const std::vector<Text_Mark>& textMarks() const { return text_marks_; }
  const std::vector<Box_Mark>& boxMarks() const { return box_marks_; }
  // Where the marks land, in pixels: the text marks, then the boxes.
  const std::vector<QRect>& markRects() const { return mark_rects_; }
  // The point of this widget (pixels) in twips of the surface.
  QPoint pixelsToTwips(const QPoint& pixels) const;

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void placeTexts();
  void placeMarks();

  Drawing drawing_;
  std::vector<QRect> rects_;
  std::vector<Text_Mark> text_marks_;
  std::vector<Box_Mark> box_marks_;
  std::vector<QRect> mark_rects_;
  int width_twips_ = 0;
  int height_twips_ = 0;
  int painted_ = 0;
};

}  // namespace morvane
