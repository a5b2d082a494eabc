// SPDX-License-Identifier: MIT
#pragma once

#include <QPolygonF>
#include <QRect>
#include <QWidget>

#include "decoders/spectrum_axis.h"
#include "decoders/spectrum_graph.h"
#include "decoders/spectrum_table.h"

namespace morvane {

// The spectrum graph: the axes with their ticks and labels, the title under the X axis and the
// step outline, drawn from the geometry the decoder returns. The outline is one polyline of two
// points a bin, so 1025 bins at full zoom-out are a single cheap draw at any size.
class SpectrumPlot : public QWidget {
  Q_OBJECT

 public:
  explicit SpectrumPlot(QWidget* parent = nullptr);

  // Replaces what is drawn and repaints.
  void set_graph(SpectrumGraph graph);
  const SpectrumGraph& graph() const { return graph_; }
  // What hovering reads out: the counts of the bins drawn (owned by the caller, which sets them
  // again with the graph), the axis range and the number of bins read.
  void set_bins(const Spectrum_Bins* bins, int32_t bin_count, const SpectrumAxis& axis);
  // "Bin b: n counts" for the bin under a point of this widget; empty outside the bins drawn.
  QString readout_at(const QPoint& at) const;

  // The area inside the axes, in pixels of this widget: the ticks' labels and the title are
  // outside it.
  QRect plot_area() const;
  // The outline in pixels of this widget.
  QPolygonF outline_pixels() const;

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;

 private:
  QPointF to_pixels(const GraphPoint& point, const QRect& area) const;

  SpectrumGraph graph_;
  const Spectrum_Bins* bins_ = nullptr;
  int32_t bin_count_ = 0;
  SpectrumAxis axis_;
};

}  // namespace morvane
