// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include <QString>
#include <QWidget>

#include "archive/archive.h"
#include "functest/short_test_ranges.h"
#include "trend_chart.h"
#include "decoders/trend_series.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QListWidget;

namespace morvane {

struct Configuration;

// A file of the campaign where it starts on the time axis.
struct FileBoundary {
  double lander_time = 0;
  QString name;
};

// The trend chart with the campaign's file boundaries drawn over it: a dotted line at each file's
// first lander time, named at its top.
class CampaignTrendChart : public TrendChart {
  Q_OBJECT

 public:
  using TrendChart::TrendChart;

  void set_boundaries(std::vector<FileBoundary> boundaries);
  const std::vector<FileBoundary>& boundaries() const { return boundaries_; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  std::vector<FileBoundary> boundaries_;
};

// The cross-file trend: the sensors ticked in the sensor table over every file of the archive,
// against lander time, as the trend window draws one file (cold-junction term, limits of the
// limit file of the archive's file type in the mode chosen). Files whose lander times overlap are
// drawn over each other.
class CampaignTrendPanel : public QWidget {
  Q_OBJECT

 public:
  // Runs a trend query of the archive (off the window's thread, errors shown); nullopt when it
  // did not complete.
  using TrendReader = std::function<std::optional<std::vector<archive::SensorTrend>>(const archive::TrendQuery&)>;

  // Runs work, showing a failure in a message box (the window's event handler guard).
  using Guard = std::function<bool(const std::function<void()>&)>;

  CampaignTrendPanel(const Configuration& config, TrendReader reader, Guard guard, QWidget* parent = nullptr);

  // The archive's files changed: their boundaries and the type whose limit file applies; the
  // ticked sensors are read again.
  void set_files(const std::vector<archive::FileRecord>& files);

  std::vector<int> chosen_sensors() const;
  void set_sensor_chosen(int sensor, bool chosen);
  const std::vector<TrendSeries>& series() const { return series_; }
  // The file ids of each series' points, point for point.
  const std::vector<std::vector<int64_t>>& point_files() const { return point_files_; }

  QListWidget* sensor_list() const { return sensors_; }
  QCheckBox* cold_junction_box() const { return cold_junction_; }
  QComboBox* limit_mode_box() const { return limit_mode_; }
  CampaignTrendChart* chart() const { return chart_; }
  QLabel* status_label() const { return status_; }

  // Reads the ticked sensors from the archive again and plots them.
  void read_series();

 private:
  QWidget* make_controls();
  void read_limit_file();
  void plot_series();
  void show_status();

  const Configuration& config_;
  TrendReader reader_;
  Guard guard_;
  std::optional<FileFormat> limit_type_;
  std::optional<TestRanges> ranges_;
  std::vector<TrendSeries> series_;
  std::vector<std::vector<int64_t>> point_files_;
  bool has_files_ = false;
  size_t points_ = 0;         // of every series
  size_t plotted_files_ = 0;  // files those points come from

  QListWidget* sensors_ = nullptr;
  QCheckBox* cold_junction_ = nullptr;
  QComboBox* limit_mode_ = nullptr;
  CampaignTrendChart* chart_ = nullptr;
  QLabel* status_ = nullptr;
};

}  // namespace morvane
