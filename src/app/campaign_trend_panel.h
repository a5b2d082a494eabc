// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include <QString>
#include <QWidget>

#include "archive/archive.h"
#include "functest/test_ranges.h"
#include "trend_chart.h"
#include "views/trend_series.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QListWidget;

namespace morvane {

struct Configuration;

// A file of the campaign where it starts on the time axis.
struct File_Boundary {
  double lander_time = 0;
  QString name;
};

// The trend chart with the campaign's file boundaries drawn over it: a dotted line at each file's
// first lander time, named at its top.
class Campaign_Trend_Chart : public TrendChart {
  Q_OBJECT

 public:
  using TrendChart::TrendChart;

  void setBoundaries(std::vector<File_Boundary> boundaries);
  const std::vector<File_Boundary>& boundaries() const { return boundaries_; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  std::vector<File_Boundary> boundaries_;
};

// The cross-file trend: the sensors ticked in the sensor table over every file of the archive,
// against lander time, as the trend window draws one file (cold-junction term, limits of the
// limit file of the archive's file type in the mode chosen). Files whose lander times overlap are
// drawn over each other.
class Campaign_Trend_Panel : public QWidget {
  Q_OBJECT

 public:
  // Runs a trend query of the archive (off the window's thread, errors shown); nullopt when it
  // did not complete.
  using Trend_Reader = std::function<std::optional<std::vector<archive::Sensor_Trend>>(const archive::Trend_Query&)>;

  // Runs work, showing a failure in a message box (the window's event handler guard).
  using Guard = std::function<bool(const std::function<void()>&)>;

  Campaign_Trend_Panel(const Configuration& config, Trend_Reader reader, Guard guard, QWidget* parent = nullptr);

  // The archive's files changed: their boundaries and the type whose limit file applies; the
  // ticked sensors are read again.
  void setFiles(const std::vector<archive::File_Record>& files);

  std::vector<int> chosenSensors() const;
  void setSensorChosen(int sensor, bool chosen);
  const std::vector<Trend_Series>& series() const { return series_; }
  // The file ids of each series' points, point for point.
  const std::vector<std::vector<int64_t>>& pointFiles() const { return point_files_; }

  QListWidget* sensorList() const { return sensors_; }
  QCheckBox* coldJunctionBox() const { return cold_junction_; }
  QComboBox* limitModeBox() const { return limit_mode_; }
  Campaign_Trend_Chart* chart() const { return chart_; }
  QLabel* statusLabel() const { return status_; }

  // Reads the ticked sensors from the archive again and plots them.
  void readSeries();

 private:
  QWidget* makeControls();
  void readLimitFile();
  void plotSeries();
  void showStatus();

  const Configuration& config_;
  Trend_Reader reader_;
  Guard guard_;
  std::optional<FileFormat> limit_type_;
  std::optional<Test_Ranges> ranges_;
  std::vector<Trend_Series> series_;
  std::vector<std::vector<int64_t>> point_files_;
  bool has_files_ = false;
  size_t points_ = 0;         // of every series
  size_t plotted_files_ = 0;  // files those points come from

  QListWidget* sensors_ = nullptr;
  QCheckBox* cold_junction_ = nullptr;
  QComboBox* limit_mode_ = nullptr;
  Campaign_Trend_Chart* chart_ = nullptr;
  QLabel* status_ = nullptr;
};

}  // namespace morvane
