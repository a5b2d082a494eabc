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

  // Replaces what is drawn and repaints.
  void setDrawing(Drawing drawing);
  const Drawing& drawing() const { return drawing_; }
  void clear() { setDrawing({}); }

  // The size of the surface in twips; it becomes the widget's size hint.
  void setSurfaceTwips(int width, int height);

  // Where each text of the drawing lands, in pixels of this widget.
  const std::vector<QRect>& textRects() const { return rects_; }
  // Texts drawn by the last paint (how much of the drawing the exposed area needed).
  int textsPainted() const { return painted_; }

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void placeTexts();

  Drawing drawing_;
  std::vector<QRect> rects_;
  int width_twips_ = 0;
  int height_twips_ = 0;
  int painted_ = 0;
};

}  // namespace morvane
