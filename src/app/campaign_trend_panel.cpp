// SPDX-License-Identifier: MIT
#include "campaign_trend_panel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>
#include <set>

#include "core/configuration.h"
#include "functest/sensor_limits.h"
#include "sensor_checklist.h"

namespace morvane {

namespace {

constexpr int kNoLimits = 0;  // the limit box's first item; then the two test modes
const QColor k_boundary_colour(90, 90, 90);

QString text_of(const std::string& text) { return QString::fromStdString(text); }

}  // namespace

// --- The chart -------------------------------------------------------------------------------

void CampaignTrendChart::set_boundaries(std::vector<FileBoundary> boundaries) {
  boundaries_ = std::move(boundaries);
  update();
}

void CampaignTrendChart::paintEvent(QPaintEvent* event) {
  TrendChart::paintEvent(event);
  const auto& traces = plot().traces;
  const bool drawn = std::any_of(traces.begin(), traces.end(), [](const auto& trace) { return !trace.empty(); });
  if (boundaries_.empty() || !drawn) return;
  const QRect area = plot_area();
  const TimeWindow shown = window();

  // Files that start in the same pixel column share a line and a label.
  std::vector<FileBoundary> in_time = boundaries_;
  std::stable_sort(in_time.begin(), in_time.end(),
                   [](const FileBoundary& a, const FileBoundary& b) { return a.lander_time < b.lander_time; });
  struct Mark {
    int x;
    QString label;
  };
  std::vector<Mark> marks;
  for (const FileBoundary& boundary : in_time) {
    if (boundary.lander_time < shown.from || boundary.lander_time > shown.to) continue;
    const int x =
        area.left() + static_cast<int>(std::lround((boundary.lander_time - shown.from) / shown.span() * area.width()));
    if (!marks.empty() && x - marks.back().x <= 1) {
      marks.back().label += QStringLiteral(", ") + boundary.name;
    } else {
      marks.push_back({x, boundary.name});
    }
  }

  // Each line dotted over the lanes, its label at the foot of the plot; a label that would run
  // into the one before it goes a line higher.
  QPainter painter(this);
  QPen pen(k_boundary_colour);
  pen.setStyle(Qt::DotLine);
  const QFontMetrics metrics(font());
  std::vector<int> row_ends;
  for (const Mark& mark : marks) {
    painter.setPen(pen);
    painter.drawLine(mark.x, area.top(), mark.x, area.bottom());
    size_t row = 0;
    while (row < row_ends.size() && row_ends[row] >= mark.x) ++row;
    if (row == row_ends.size()) row_ends.push_back(0);
    const int width = metrics.horizontalAdvance(mark.label) + 4;
    row_ends[row] = mark.x + 2 + width;
    const QRect box(mark.x + 2, area.bottom() - 2 - static_cast<int>(row + 1) * metrics.height(), width,
                    metrics.height());
    painter.fillRect(box, QColor(255, 255, 255, 210));
    painter.setPen(k_boundary_colour);
    painter.drawText(box.left() + 2, box.top() + metrics.ascent(), mark.label);
  }
}

// --- The panel -------------------------------------------------------------------------------

CampaignTrendPanel::CampaignTrendPanel(const Configuration& config, TrendReader reader, Guard guard,
                                           QWidget* parent)
    : QWidget(parent), config_(config), reader_(std::move(reader)), guard_(std::move(guard)) {
  chart_ = new CampaignTrendChart(this);
  status_ = new QLabel(this);
  status_->setObjectName("TrendStatus");
  auto* plot_side = new QVBoxLayout;
  plot_side->addWidget(chart_, 1);
  plot_side->addWidget(status_);
  auto* layout = new QHBoxLayout(this);
  layout->addWidget(make_controls());
  layout->addLayout(plot_side, 1);
  connect(chart_, &TrendChart::window_changed, this, [this] { show_status(); });
  plot_series();
}

QWidget* CampaignTrendPanel::make_controls() {
  auto* panel = new QWidget(this);
  auto* column = new QVBoxLayout(panel);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(new QLabel(tr("Sensors"), panel));
  sensors_ = make_sensor_checklist(config_, panel);
  column->addWidget(sensors_, 1);
  connect(sensors_, &QListWidget::itemChanged, this, [this] { read_series(); });

  cold_junction_ = new QCheckBox(tr("Cold-junction term"), panel);
  cold_junction_->setObjectName("ColdJunction");
  cold_junction_->setChecked(true);
  column->addWidget(cold_junction_);
  connect(cold_junction_, &QCheckBox::toggled, this, [this] { read_series(); });

  auto* separate = new QCheckBox(tr("One axis per sensor"), panel);
  separate->setObjectName("SeparateAxes");
  column->addWidget(separate);
  connect(separate, &QCheckBox::toggled, chart_, &TrendChart::set_separate_axes);

  limit_mode_ = add_limit_mode_row(*column, panel, 1);
  connect(limit_mode_, &QComboBox::currentIndexChanged, this, [this] {
    read_limit_file();
    plot_series();
  });

  auto* whole = new QPushButton(tr("Whole Campaign"), panel);
  whole->setObjectName("WholeCampaign");
  column->addWidget(whole);
  connect(whole, &QPushButton::clicked, chart_, &TrendChart::show_whole_file);
  return panel;
}

std::vector<int> CampaignTrendPanel::chosen_sensors() const { return checked_sensors(*sensors_); }

void CampaignTrendPanel::set_sensor_chosen(int sensor, bool chosen) { check_sensor(*sensors_, sensor, chosen); }

void CampaignTrendPanel::set_files(const std::vector<archive::FileRecord>& files) {
  has_files_ = !files.empty();
  std::vector<FileBoundary> boundaries;
  limit_type_.reset();
  for (const archive::FileRecord& file : files) {
    if (file.first_lander_time) boundaries.push_back({double(*file.first_lander_time), text_of(file.name)});
    // The newest file's type: its limit file is the one a campaign of one type is held to.
    limit_type_ = parse_format_tag(file.type);
  }
  chart_->set_boundaries(std::move(boundaries));
  read_limit_file();
  read_series();
  chart_->show_whole_file();
}

void CampaignTrendPanel::read_series() {
  const std::vector<int> wanted = chosen_sensors();
  std::vector<TrendSeries> made;
  std::vector<std::vector<int64_t>> files;
  if (!wanted.empty() && has_files_) {
    archive::TrendQuery query;
    query.sensors = wanted;
    query.cold_junction = cold_junction_->isChecked();
    const auto trends = reader_(query);
    if (!trends) return;  // the error was shown; the plot stays as it was
    for (const archive::SensorTrend& trend : *trends) {
      std::vector<std::pair<int32_t, double>> points;
      std::vector<int64_t> of_file;
      points.reserve(trend.points.size());
      of_file.reserve(trend.points.size());
      for (const archive::TrendPoint& point : trend.points) {
        points.emplace_back(point.lander_time, point.value);
        of_file.push_back(point.file_id);
      }
      made.emplace_back(trend.number, trend.name, trend.unit, points);
      files.push_back(std::move(of_file));
    }
  }
  series_ = std::move(made);
  point_files_ = std::move(files);
  points_ = 0;
  std::set<int64_t> plotted_files;
  for (const std::vector<int64_t>& of_series : point_files_) {
    points_ += of_series.size();
    plotted_files.insert(of_series.begin(), of_series.end());
  }
  plotted_files_ = plotted_files.size();
  plot_series();
}

void CampaignTrendPanel::read_limit_file() {
  ranges_.reset();
  const int mode = limit_mode_->currentIndex();
  if (mode == kNoLimits || !limit_type_) return;
  // A limit file that cannot be read is shown and leaves the plot without limits.
  guard_([&] {
    ranges_ = read_test_ranges_if_present(config_.Egse_Path, *limit_type_,
                                          mode == 1 ? TestMode::CruisePhase : TestMode::EAFT);
  });
}

void CampaignTrendPanel::plot_series() {
  std::vector<std::optional<TrendLimits>> limits = series_limits(series_, ranges_);
  chart_->set_message(has_files_ ? tr("Tick the sensors to plot") : tr("The archive holds no files"));
  chart_->set_series(&series_, std::move(limits));
  show_status();
}

void CampaignTrendPanel::show_status() {
  QString text = tr("%1 points from %2 files").arg(points_).arg(plotted_files_);
  if (limit_mode_->currentIndex() != kNoLimits && limit_type_) {
    text += ranges_ ? tr("; limits from %1").arg(QFileInfo(text_of(ranges_->path)).fileName())
                    : tr("; no limit file for %1 %2")
                          .arg(QString::fromUtf8(format_tag(*limit_type_).data()), limit_mode_->currentText());
  }
  status_->setText(text);
}

}  // namespace morvane
