// SPDX-License-Identifier: MIT
#include "spectrum_plot.h"

#include <algorithm>
#include <cmath>

#include <QFontMetrics>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

#include "twips.h"

namespace morvane {

namespace {

constexpr int kTickLength = 4;  // pixels
constexpr int kGap = 4;         // pixels between a tick and its label
// The graph's natural size in twips (about 6.5 by 3 inches).
constexpr int kWidthTwips = 9400;
constexpr int kHeightTwips = 4300;
const QColor k_grid_colour(224, 224, 224);

QColor qt_colour(const Colour& c) { return {c.red, c.green, c.blue}; }

}  // namespace

SpectrumPlot::SpectrumPlot(QWidget* parent) : QWidget(parent) {
  setAutoFillBackground(true);
  QPalette surface = palette();
  surface.setColor(QPalette::Window, Qt::white);
  setPalette(surface);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  setMouseTracking(true);  // the readout follows the pointer
}

void SpectrumPlot::set_bins(const Spectrum_Bins* bins, int32_t bin_count, const SpectrumAxis& axis) {
  bins_ = bins;
  bin_count_ = bin_count;
  axis_ = axis;
}

QString SpectrumPlot::readout_at(const QPoint& at) const {
  const QRect area = plot_area();
  if (!bins_ || !area.contains(at) || area.width() < 2 || graph_.width <= 0 || axis_.X_Zoom <= 0) return {};
  // Bin b starts at (b - X_Start) x X_Zoom plot units from the left of the axes.
  const double units = (at.x() - area.left()) * graph_.width / area.width();
  const int64_t bin = axis_.X_Start + static_cast<int64_t>(std::floor(units / axis_.X_Zoom));
  const int64_t last = std::min<int64_t>({axis_.X_End, bin_count_ - 1, static_cast<int64_t>(bins_->size()) - 1});
  if (bin < axis_.X_Start || bin > last) return {};
  return tr("Bin %1: %2 counts").arg(bin).arg((*bins_)[static_cast<size_t>(bin)]);
}

void SpectrumPlot::mouseMoveEvent(QMouseEvent* event) {
  const QString text = readout_at(event->position().toPoint());
  if (text.isEmpty()) {
    QToolTip::hideText();
  } else {
    QToolTip::showText(event->globalPosition().toPoint(), text, this);
  }
  QWidget::mouseMoveEvent(event);
}

void SpectrumPlot::set_graph(SpectrumGraph graph) {
  graph_ = std::move(graph);
  update();
}

QSize SpectrumPlot::sizeHint() const {
  const QPoint size = twips_to_pixels(kWidthTwips, kHeightTwips, *this);
  return {size.x(), size.y()};
}

QSize SpectrumPlot::minimumSizeHint() const { return sizeHint() / 2; }

QRect SpectrumPlot::plot_area() const {
  const QFontMetrics metrics(font());
  int widest_y_label = 0;
  for (const GraphTick& tick : graph_.y_ticks) {
    widest_y_label = std::max(widest_y_label, metrics.horizontalAdvance(QString::fromStdString(tick.label)));
  }
  const int last_x_label =
      graph_.x_ticks.empty() ? 0 : metrics.horizontalAdvance(QString::fromStdString(graph_.x_ticks.back().label));
  const int left = kGap + widest_y_label + kGap + kTickLength;
  const int top = metrics.height() / 2 + kGap;
  const int right = last_x_label / 2 + kGap;
  const int bottom = kTickLength + kGap + 2 * metrics.height() + kGap;
  return QRect(QPoint(left, top), QPoint(width() - 1 - right, height() - 1 - bottom));
}

QPointF SpectrumPlot::to_pixels(const GraphPoint& point, const QRect& area) const {
  const double across = graph_.width > 0 ? point.x / graph_.width : 0;
  return {area.left() + across * area.width(), area.bottom() - point.y * area.height()};
}

QPolygonF SpectrumPlot::outline_pixels() const {
  const QRect area = plot_area();
  QPolygonF outline;
  outline.reserve(static_cast<qsizetype>(graph_.outline.size()));
  for (const GraphPoint& point : graph_.outline) outline << to_pixels(point, area);
  return outline;
}

void SpectrumPlot::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QRect area = plot_area();
  if (area.width() < 2 || area.height() < 2) return;
  const QFontMetrics metrics(font());

  // Grid lines at the ticks, then the axes over them.
  painter.setPen(k_grid_colour);
  for (const GraphTick& tick : graph_.x_ticks) {
    const double x = to_pixels({tick.at, 0}, area).x();
    painter.drawLine(QPointF(x, area.top()), QPointF(x, area.bottom()));
  }
  for (const GraphTick& tick : graph_.y_ticks) {
    const double y = to_pixels({0, tick.at}, area).y();
    painter.drawLine(QPointF(area.left(), y), QPointF(area.right(), y));
  }

  painter.setPen(Qt::black);
  painter.drawLine(area.bottomLeft(), area.bottomRight());
  painter.drawLine(area.bottomLeft(), area.topLeft());
  for (const GraphTick& tick : graph_.x_ticks) {
    const double x = to_pixels({tick.at, 0}, area).x();
    painter.drawLine(QPointF(x, area.bottom()), QPointF(x, area.bottom() + kTickLength));
    const QString label = QString::fromStdString(tick.label);
    const int width = metrics.horizontalAdvance(label);
    painter.drawText(QPointF(x - width / 2.0, area.bottom() + kTickLength + kGap + metrics.ascent()), label);
  }
  for (const GraphTick& tick : graph_.y_ticks) {
    const double y = to_pixels({0, tick.at}, area).y();
    painter.drawLine(QPointF(area.left() - kTickLength, y), QPointF(area.left(), y));
    const QString label = QString::fromStdString(tick.label);
    const int width = metrics.horizontalAdvance(label);
    painter.drawText(QPointF(area.left() - kTickLength - kGap - width, y + metrics.ascent() / 2.0 - 1), label);
  }
  const QString title = QString::fromStdString(graph_.x_title);
  painter.drawText(QPointF(area.left() + (area.width() - metrics.horizontalAdvance(title)) / 2.0,
                           area.bottom() + kTickLength + kGap + metrics.height() + kGap + metrics.ascent()),
                   title);

  if (graph_.outline.empty()) return;
  painter.setClipRect(area.adjusted(0, -1, 1, 0));
  painter.setPen(QPen(qt_colour(graph_.outline_colour), 0));
  painter.drawPolyline(outline_pixels());
}

}  // namespace morvane
