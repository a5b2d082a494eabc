// SPDX-License-Identifier: MIT
#include "trend_chart.h"

#include <QFontMetrics>
#include <QFutureWatcher>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>
#include <QPainterPath>
#include <QRubberBand>
#include <QWheelEvent>
#include <QtConcurrent/QtConcurrentRun>
#include <algorithm>
#include <cmath>

namespace morvane {

namespace {

constexpr int kTickLength = 4;      // pixels
constexpr int kGap = 4;             // pixels between a tick and its label
constexpr int kLaneGap = 10;        // pixels between two lanes
constexpr int kMinimumBand = 3;     // pixels a right-button drag must span to zoom
constexpr double kWheelStep = 0.8;  // the window's span after one notch of the wheel away from the user
// The widest value label the left margin is made for, and the room a time label needs.
const char* const kWidestValueLabel = "-000000.000";
const char* const kWidestTimeLabel = "000000000";
const char* const kTimeTitle = "Lander time (s)";

const QColor k_frame_colour(160, 160, 160);
const QColor k_grid_colour(228, 228, 228);
const QColor k_limit_colour(255, 0, 0);
// Series colours, none of them the limits' red.
const QColor kSeriesColours[] = {{31, 119, 180},  {255, 127, 14},  {44, 160, 44},  {148, 103, 189}, {140, 86, 75},
                                 {227, 119, 194}, {127, 127, 127}, {188, 189, 34}, {23, 190, 207}};

QColor series_colour(size_t s) { return kSeriesColours[s % std::size(kSeriesColours)]; }

QString text_of(const std::string& text) { return QString::fromStdString(text); }

const std::vector<TrendSeries> kNoSeries;

}  // namespace

TrendChart::TrendChart(QWidget* parent) : QWidget(parent) {
  setObjectName("TrendChart");
  setAutoFillBackground(true);
  QPalette surface = palette();
  surface.setColor(QPalette::Window, Qt::white);
  setPalette(surface);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  setFocusPolicy(Qt::WheelFocus);
  setCursor(Qt::OpenHandCursor);
  setMouseTracking(true);  // the readout follows the pointer
  band_ = new QRubberBand(QRubberBand::Rectangle, this);
  band_->hide();
}

TrendChart::~TrendChart() { stop_plotting(); }

QSize TrendChart::sizeHint() const { return {760, 440}; }

QSize TrendChart::minimumSizeHint() const { return {320, 200}; }

void TrendChart::set_series(const std::vector<TrendSeries>* series, std::vector<std::optional<TrendLimits>> limits) {
  series_ = series;
  limits_ = std::move(limits);
  series_changed();
}

void TrendChart::series_changed() {
  const TimeWindow whole = series_ ? whole_time_window(*series_) : TimeWindow{};
  whole_window_ = whole;
  if (whole_) {
    window_ = whole;
  } else if (window_.to >= latest_time_ && whole.to > latest_time_) {
    const double step = whole.to - latest_time_;
    window_ = {window_.from + step, window_.to + step};
  }
  latest_time_ = whole.to;
  invalidate();
  emit window_changed();
}

void TrendChart::set_separate_axes(bool separate) {
  if (separate == separate_) return;
  separate_ = separate;
  invalidate();
}

void TrendChart::set_message(const QString& message) {
  message_ = message;
  update();
}

void TrendChart::change_window(const TimeWindow& window, bool whole) {
  window_ = window;
  whole_ = whole;
  invalidate();
  emit window_changed();
}

void TrendChart::set_window(const TimeWindow& window) {
  // Never narrower than a zoom reaches, nor turned round.
  TimeWindow wanted{std::min(window.from, window.to), std::max(window.from, window.to)};
  if (wanted.span() < kNarrowestTimeWindow) {
    const double middle = (wanted.from + wanted.to) / 2;
    wanted = {middle - kNarrowestTimeWindow / 2, middle + kNarrowestTimeWindow / 2};
  }
  change_window(wanted, false);
}

void TrendChart::show_whole_file() {
  latest_time_ = whole_window_.to;
  change_window(whole_window_, true);
}

void TrendChart::zoom_about(double time, double factor) { change_window(zoom_time_window(window_, time, factor), false); }

void TrendChart::pan_by(double seconds) { change_window({window_.from + seconds, window_.to + seconds}, false); }

void TrendChart::invalidate() {
  stop_plotting();
  plot_valid_ = false;
  update();
}

size_t TrendChart::lane_count() const { return separate_ && series_ && !series_->empty() ? series_->size() : 1; }

QRect TrendChart::plot_area() const {
  const QFontMetrics metrics(font());
  const int left = kGap + metrics.horizontalAdvance(QString::fromUtf8(kWidestValueLabel)) + kGap + kTickLength;
  const int top = metrics.height() / 2 + kGap;
  const int right = metrics.horizontalAdvance(QString::fromUtf8(kWidestTimeLabel)) / 2 + kGap;
  const int bottom = kTickLength + kGap + metrics.height() + kGap + metrics.height() + kGap;
  return QRect(QPoint(left, top), QPoint(width() - 1 - right, height() - 1 - bottom));
}

QRect TrendChart::lane_area(size_t lane) const {
  const QRect area = plot_area();
  const int lanes = static_cast<int>(lane_count());
  const int height = std::max(1, (area.height() - (lanes - 1) * kLaneGap) / lanes);
  const int top = area.top() + static_cast<int>(lane) * (height + kLaneGap);
  return QRect(area.left(), top, area.width(), height);
}

double TrendChart::time_at(int x) const {
  const QRect area = plot_area();
  return window_.from + (x - area.left()) * window_.span() / std::max(1, area.width());
}

TrendPlotOptions TrendChart::plot_options() const {
  const QFontMetrics metrics(font());
  TrendPlotOptions options;
  options.separate_axes = separate_;
  options.columns = std::max(1, plot_area().width());
  options.most_time_ticks =
      std::max(2, options.columns / (metrics.horizontalAdvance(QString::fromUtf8(kWidestTimeLabel)) + 3 * kGap));
  options.most_value_ticks = std::max(2, lane_area(0).height() / (2 * metrics.height()));
  return options;
}

const TrendPlot& TrendChart::plot() const {
  if (!plot_valid_) {
    if (job_.future.isValid()) {
      // Being made of what is shown now: the worker's plot, once it is there.
      plot_ = job_.future.result();
      job_ = {};
    } else {
      plot_ = make_trend_plot(series_ ? *series_ : kNoSeries, limits_, window_, plot_options());
    }
    plot_valid_ = true;
  }
  return plot_;
}

void TrendChart::start_plot() {
  const std::vector<TrendSeries>& series = series_ ? *series_ : kNoSeries;
  size_t points = 0;
  for (const TrendSeries& one : series) points += one.size();
  if (points < inline_below_) {
    plot();
    return;
  }
  // Decimating tens of millions of points takes a good part of a second: the window goes on
  // turning meanwhile. The series stay as they are until stop_plotting().
  TrendPlotOptions options = plot_options();
  auto stop = std::make_shared<std::atomic<bool>>(false);
  options.stop = stop.get();
  const std::vector<std::optional<TrendLimits>> limits = limits_;
  const TimeWindow window = window_;
  job_ = {++jobs_started_, stop, QtConcurrent::run([&series, limits, window, options, stop] {
            return make_trend_plot(series, limits, window, options);
          })};
  auto* watcher = new QFutureWatcher<TrendPlot>(this);
  const uint64_t number = job_.number;
  connect(watcher, &QFutureWatcherBase::finished, this, [this, watcher, number] {
    watcher->deleteLater();
    take_plot(number);
  });
  watcher->setFuture(job_.future);
  setCursor(Qt::BusyCursor);
}

void TrendChart::take_plot(uint64_t number) {
  if (job_.future.isValid() && job_.number == number) plot();
  if (job_.future.isValid()) return;  // a newer plot is in the making
  // Drawn now: plot() may also have taken it already, in a paint that could not wait to show it.
  setCursor(drag_ == Drag::Pan ? Qt::ClosedHandCursor : Qt::OpenHandCursor);
  update();
}

void TrendChart::stop_plotting() {
  if (!job_.future.isValid()) return;
  job_.stop->store(true);
  try {
    job_.future.waitForFinished();
  } catch (...) {
    // An incomplete plot that failed is dropped like any other.
  }
  job_ = {};
  setCursor(drag_ == Drag::Pan ? Qt::ClosedHandCursor : Qt::OpenHandCursor);
}

void TrendChart::resizeEvent(QResizeEvent*) {
  stop_plotting();
  plot_valid_ = false;
}

void TrendChart::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QFontMetrics metrics(font());
  const bool anything = series_ && !series_->empty() && !series_->front().empty();
  if (!anything) {
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextWordWrap, message_);
    return;
  }
  const QRect area = plot_area();
  if (area.width() < 2 || area.height() < 2) return;
  if (!plot_valid_ && !job_.future.isValid()) start_plot();
  // While the plot is being made the one before stays, when it is of the same series.
  const bool stale_fits = plot_.traces.size() == series_->size() && plot_.lanes.size() == lane_count() &&
                          plot_.window.span() > 0;
  if (!plot_valid_ && !stale_fits) return;
  const TrendPlot& drawn = plot_;

  // The time grid across every lane, its ticks and labels under the last one.
  const double span = drawn.window.span();
  const int label_top = area.bottom() + kTickLength + kGap;
  for (const AxisTick& tick : drawn.time_ticks) {
    const int x = area.left() + static_cast<int>(std::lround((tick.value - drawn.window.from) / span * area.width()));
    painter.setPen(k_grid_colour);
    for (size_t lane = 0; lane < drawn.lanes.size(); ++lane) {
      const QRect band = lane_area(lane);
      painter.drawLine(x, band.top(), x, band.bottom());
    }
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawLine(x, area.bottom(), x, area.bottom() + kTickLength);
    const QString label = text_of(tick.label);
    const int width = metrics.horizontalAdvance(label);
    painter.drawText(x - width / 2, label_top + metrics.ascent(), label);
  }
  const QString title = QString::fromUtf8(kTimeTitle);
  painter.drawText(area.left() + (area.width() - metrics.horizontalAdvance(title)) / 2,
                   label_top + metrics.height() + kGap + metrics.ascent(), title);

  for (size_t lane = 0; lane < drawn.lanes.size(); ++lane) draw_lane(painter, drawn, lane);
}

void TrendChart::draw_lane(QPainter& painter, const TrendPlot& drawn, size_t index) const {
  const TrendLane& lane = drawn.lanes[index];
  const QRect band = lane_area(index);
  const QFontMetrics metrics(font());
  const double range = lane.high - lane.low;
  auto y_of = [&](double value) { return band.bottom() + 1 - (value - lane.low) / range * band.height(); };

  // Value grid and labels, then the lane's frame.
  for (const AxisTick& tick : lane.ticks) {
    const int y = static_cast<int>(std::lround(y_of(tick.value)));
    painter.setPen(k_grid_colour);
    painter.drawLine(band.left() + 1, y, band.right() - 1, y);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawLine(band.left() - kTickLength, y, band.left(), y);
    const QString label = text_of(tick.label);
    painter.drawText(band.left() - kTickLength - kGap - metrics.horizontalAdvance(label),
                     y - metrics.height() / 2 + metrics.ascent(), label);
  }
  painter.setPen(k_frame_colour);
  painter.drawRect(band.adjusted(0, 0, -1, -1));

  painter.save();
  painter.setClipRect(band.adjusted(1, 1, -1, -1));
  // Limit lines, dashed, each named at its right end.
  for (const size_t s : lane.series) {
    if (s >= limits_.size() || !limits_[s]) continue;
    QPen pen(k_limit_colour);
    pen.setStyle(Qt::DashLine);
    const QString name = text_of((*series_)[s].name);
    for (const auto& [value, word] : {std::pair{limits_[s]->low, "min"}, std::pair{limits_[s]->high, "max"}}) {
      const double y = y_of(value);
      painter.setPen(pen);
      painter.drawLine(QPointF(band.left(), y), QPointF(band.right(), y));
      const QString label = name + QStringLiteral(" ") + QString::fromUtf8(word);
      // Above its line, or below it where the lane's top leaves no room.
      const double baseline = y - 2 - metrics.ascent() < band.top() ? y + 2 + metrics.ascent() : y - 2;
      painter.setPen(k_limit_colour);
      painter.drawText(QPointF(band.right() - kGap - metrics.horizontalAdvance(label), baseline), label);
    }
  }
  // Each series: its lowest and highest value in every pixel column, joined column to column.
  // Where the points are few, each is marked.
  const double left = band.left() + 0.5;
  for (const size_t s : lane.series) {
    const std::vector<ColumnExtent>& trace = drawn.traces[s];
    if (trace.empty()) continue;
    QPolygonF line;
    line.reserve(static_cast<qsizetype>(2 * trace.size()));
    for (const ColumnExtent& column : trace) {
      const double x = left + column.column;
      const double high = y_of(column.high);
      const double low = y_of(column.low);
      const bool from_above = !line.isEmpty() && std::abs(line.back().y() - high) < std::abs(line.back().y() - low);
      line << QPointF(x, from_above ? high : low);
      if (column.low != column.high) line << QPointF(x, from_above ? low : high);
    }
    // A cosmetic pen of one pixel is drawn straight onto the surface; any wider pen would send
    // the line of thousands of vertices through the path stroker, a hundred times slower.
    QPen pen(series_colour(s));
    pen.setCosmetic(true);
    painter.setPen(pen);
    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.drawPolyline(line);
    if (static_cast<int>(trace.size()) * 6 < drawn.columns) {
      painter.setBrush(series_colour(s));
      for (const QPointF& point : line) painter.drawEllipse(point, 2.0, 2.0);
      painter.setBrush(Qt::NoBrush);
    }
    painter.setRenderHint(QPainter::Antialiasing, false);
  }
  // The legend: each series' name and unit in its colour, on a light ground.
  int y = band.top() + kGap;
  for (const size_t s : lane.series) {
    const TrendSeries& one = (*series_)[s];
    const QString text = QStringLiteral("%1  %2 (%3)").arg(one.number).arg(text_of(one.name), text_of(one.unit));
    const QRect box(band.left() + kGap, y, metrics.horizontalAdvance(text) + 2 * kGap, metrics.height());
    painter.fillRect(box, QColor(255, 255, 255, 210));
    painter.setPen(series_colour(s));
    painter.drawText(box.left() + kGap, box.top() + metrics.ascent(), text);
    y += metrics.height();
  }
  painter.restore();
}

// --- The mouse -----------------------------------------------------------------------------

void TrendChart::wheelEvent(QWheelEvent* event) {
  const int notches = event->angleDelta().y();
  if (notches == 0) return event->ignore();
  zoom_about(time_at(static_cast<int>(event->position().x())), std::pow(kWheelStep, notches / 120.0));
  event->accept();
}

void TrendChart::mousePressEvent(QMouseEvent* event) {
  drag_start_ = event->position().toPoint();
  drag_window_ = window_;
  const bool band = event->button() == Qt::RightButton ||
                    (event->button() == Qt::LeftButton && (event->modifiers() & Qt::ShiftModifier));
  if (band) {
    drag_ = Drag::Band;
    const QRect area = plot_area();
    band_->setGeometry(QRect(drag_start_.x(), area.top(), 1, area.height()));
    band_->show();
  } else if (event->button() == Qt::LeftButton) {
    drag_ = Drag::Pan;
    setCursor(Qt::ClosedHandCursor);
  }
  event->accept();
}

void TrendChart::mouseMoveEvent(QMouseEvent* event) {
  const QPoint at = event->position().toPoint();
  if (drag_ == Drag::Pan) {
    const double seconds_per_pixel = drag_window_.span() / std::max(1, plot_area().width());
    const double shift = -(at.x() - drag_start_.x()) * seconds_per_pixel;
    change_window({drag_window_.from + shift, drag_window_.to + shift}, false);
  } else if (drag_ == Drag::Band) {
    const QRect area = plot_area();
    const int x = std::clamp(at.x(), area.left(), area.right());
    band_->setGeometry(
        QRect(QPoint(std::min(x, drag_start_.x()), area.top()), QPoint(std::max(x, drag_start_.x()), area.bottom())));
  } else if (plot_area().contains(at)) {
    QToolTip::showText(event->globalPosition().toPoint(), readout_at(at.x()), this);
  } else {
    QToolTip::hideText();
  }
  event->accept();
}

QString TrendChart::readout_at(int x) const {
  if (!series_ || series_->empty()) return {};
  return trend_readout(*series_, time_at(x));
}

QString trend_readout(const std::vector<TrendSeries>& series, double time) {
  QStringList lines{QObject::tr("t = %1 s").arg(std::llround(time))};
  for (const TrendSeries& one : series) {
    if (one.empty()) continue;
    // Points are in file order, which is time order but for the odd step back: the nearest by
    // time among the neighbours of where the time would stand.
    size_t low = 0, high = one.size();
    while (low < high) {
      const size_t middle = low + (high - low) / 2;
      if (one.time(middle) < time) {
        low = middle + 1;
      } else {
        high = middle;
      }
    }
    size_t nearest = low == one.size() ? low - 1 : low;
    if (low > 0 && std::abs(one.time(low - 1) - time) <= std::abs(one.time(nearest) - time)) nearest = low - 1;
    lines.append(QObject::tr("%1: %2 %3 at %4 s")
                     .arg(QString::fromStdString(one.name).trimmed(), QString::number(one.value(nearest), 'g', 6),
                          QString::fromStdString(one.unit).trimmed())
                     .arg(one.time(nearest)));
  }
  return lines.join(QLatin1Char('\n'));
}

void TrendChart::mouseReleaseEvent(QMouseEvent* event) {
  if (drag_ == Drag::Band) {
    band_->hide();
    const QRect area = plot_area();
    const int x = std::clamp(event->position().toPoint().x(), area.left(), area.right());
    if (std::abs(x - drag_start_.x()) >= kMinimumBand) {
      set_window({time_at(std::min(x, drag_start_.x())), time_at(std::max(x, drag_start_.x()))});
    }
  }
  drag_ = Drag::None;
  setCursor(Qt::OpenHandCursor);
  event->accept();
}

void TrendChart::mouseDoubleClickEvent(QMouseEvent* event) {
  show_whole_file();
  event->accept();
}

}  // namespace morvane
