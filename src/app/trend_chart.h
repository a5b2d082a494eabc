// SPDX-License-Identifier: MIT
#pragma once

#include <QFuture>
#include <QPoint>
#include <QRect>
#include <QString>
#include <QWidget>
#include <atomic>
#include <memory>
#include <optional>
#include <vector>

#include "decoders/trend_plot.h"

class QRubberBand;

namespace morvane {

// The trend plot's drawing surface: lanes of sensor values against lander time, drawn with
// QPainter from the plot the decoder makes (a million points a series become one line segment
// or two per pixel column). The mouse moves the time window: the wheel zooms about the time
// under the cursor, a drag with the left button pans, a drag with the right button (or Shift
// and the left button) zooms to the band it spans, and a double click shows the whole file
// again.
class TrendChart : public QWidget {
  Q_OBJECT

 public:
  explicit TrendChart(QWidget* parent = nullptr);

  // What to draw: the series (owned by the caller, which calls series_changed() whenever they
  // change) and the limits of each.
  void set_series(const std::vector<TrendSeries>* series, std::vector<std::optional<TrendLimits>> limits);
  // The series gained points (live follow) or were made anew. A plot showing the whole file goes
  // on doing so; one zoomed in on the newest packets moves on with them; any other stays.
  void series_changed();
  void set_separate_axes(bool separate);
  bool separate_axes() const { return separate_; }
  // What the chart shows when there are no series to plot.
  void set_message(const QString& message);
  QString message() const { return message_; }

  // The time window shown, and whether it is the whole file (it then follows the file's growth).
  TimeWindow window() const { return window_; }
  bool shows_whole_file() const { return whole_; }
  void set_window(const TimeWindow& window);
  void show_whole_file();
  // Zoom (factor < 1 zooms in) about a time; pan by seconds.
  void zoom_about(double time, double factor);
  void pan_by(double seconds);

  // The plot of what is shown now: made here, or taken from the worker thread making it.
  const TrendPlot& plot() const;
  // A plot of many points is made on a worker thread (the chart shows a busy cursor and keeps
  // what it drew until the plot is ready); one of fewer than this many points in all, here.
  static constexpr size_t kPlotInlineBelow = 4'000'000;
  void set_plot_inline_below(size_t points) { inline_below_ = points; }
  // Whether a plot is being made on the worker thread.
  bool plotting() const { return job_.future.isValid() && !job_.future.isFinished(); }
  // Stops the plot being made on the worker thread and waits for it: the series may then change
  // or go. The owner of the series calls it before it changes them (and before they go).
  void stop_plotting();
  ~TrendChart() override;
  const std::vector<std::optional<TrendLimits>>& limits() const { return limits_; }
  // The area inside the axes, in pixels of this widget; and the area of each lane in it.
  QRect plot_area() const;
  QRect lane_area(size_t lane) const;
  // The lander time at a pixel column of this widget.
  double time_at(int x) const;
  // What hovering over column x reads out: the time there and, for each series, the time and
  // value of its point nearest to it (empty when there is nothing plotted).
  QString readout_at(int x) const;

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 signals:
  // The time window changed (zoom, pan, reset or growth).
  void window_changed();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;

 private:
  void change_window(const TimeWindow& window, bool whole);
  void invalidate();
  size_t lane_count() const;
  void draw_lane(QPainter& painter, const TrendPlot& drawn, size_t lane) const;
  TrendPlotOptions plot_options() const;
  // Starts making the plot of what is shown on the worker thread (or makes it here when small).
  void start_plot();
  void take_plot(uint64_t job);

  const std::vector<TrendSeries>* series_ = nullptr;
  // The series' whole time range, found when they change: a pass over millions of times that
  // showing the whole file again need not repeat.
  TimeWindow whole_window_;
  std::vector<std::optional<TrendLimits>> limits_;
  bool separate_ = false;
  QString message_;
  TimeWindow window_;
  bool whole_ = true;
  double latest_time_ = 0;  // the newest time of the series when last seen, for following them

  mutable TrendPlot plot_;
  mutable bool plot_valid_ = false;
  size_t inline_below_ = kPlotInlineBelow;
  // The plot being made on the worker thread: its number (a later one replaces it) and the flag
  // that stops it.
  struct PlotJob {
    uint64_t number = 0;
    std::shared_ptr<std::atomic<bool>> stop;
    QFuture<TrendPlot> future;
  };
  mutable PlotJob job_;
  uint64_t jobs_started_ = 0;

  enum class Drag { None, Pan, Band };
  Drag drag_ = Drag::None;
  QPoint drag_start_;
  TimeWindow drag_window_;
  QRubberBand* band_ = nullptr;
};

// "t = 1234 s" and one line per series, "Name: value unit at t s", its point nearest to time.
QString trend_readout(const std::vector<TrendSeries>& series, double time);

}  // namespace morvane
