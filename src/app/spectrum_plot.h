// SPDX-License-Identifier: MIT
#pragma once

#include <QPolygonF>
#include <QRect>
#include <QWidget>

#include "views/spectrum_axis.h"
#include "views/spectrum_graph.h"
#include "views/spectrum_table.h"

namespace morvane {

// The spectrum graph: the axes with their ticks and labels, the title under the X axis and the
// step outline, drawn from the geometry the decoder returns. The outline is one polyline of two
// points a bin, so 1025 bins at full zoom-out are a single cheap draw at any size.
class SpectrumPlot : public QWidget {
  Q_OBJECT

 public:
  explicit SpectrumPlot(QWidget* parent = nullptr);

  // Replaces what is drawn and repaints.
  void setGraph(Spectrum_Graph graph);
  const Spectrum_Graph& graph() const { return graph_; }
  // What hovering reads out: the counts of the bins drawn (owned by the caller, which sets them
  // again with the graph), the axis range and the number of bins read.
  void setBins(const Spectrum_Bins* bins, int32_t bin_count, const Spectrum_Axis& axis);
  // "Bin b: n counts" for the bin under a point of this widget; empty outside the bins drawn.
  QString readoutAt(const QPoint& at) const;

  // The area inside the axes, in pixels of this widget: the ticks' labels and the title are
  // outside it.
  QRect plotArea() const;
  // The outline in pixels of this widget.
  QPolygonF outlinePixels() const;

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;

 private:
  QPointF toPixels(const Graph_Point& point, const QRect& area) const;

  Spectrum_Graph graph_;
  const Spectrum_Bins* bins_ = nullptr;
  int32_t bin_count_ = 0;
  Spectrum_Axis axis_;
};

}  // namespace morvane
