// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <vector>

#include "child_view.h"
#include "functest/short_test_ranges.h"
#include "decoders/trend_series.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QListWidget;
class QPushButton;
class QRadioButton;

namespace morvane {

class TrendChart;

// The trend plot: the calibrated values of the sensors ticked in the sensor table, as the
// housekeeping page computes them (with or without the cold-junction term), against lander time
// over every housekeeping packet of the file, on a shared value axis or one each. Where a limit
// record of the file type's limit file applies to a sensor (in the mode chosen), its limits are
// drawn across the sensor's lane; without the file there are none. The plotted range can be
// saved as a picture or as delimited text. Live follow adds the new packets; a load or a
// byte-order switch plots the same sensors of the new file, whole.
class TrendForm : public ChildView {
  Q_OBJECT

 public:
  explicit TrendForm(Workstation& workstation);
  ~TrendForm() override;

  void update_realtime() override;
  void session_reloaded() override;

  // The sensors ticked, in table order, and ticking one (as a click on its box does).
  std::vector<int> chosen_sensors() const;
  void set_sensor_chosen(int sensor, bool chosen);
  // The series plotted, one per ticked sensor in table order.
  const std::vector<TrendSeries>& series() const { return series_; }
  // The limit file read for the mode chosen, if there is one.
  const std::optional<TestRanges>& limit_file() const { return ranges_; }

  // Asks for a file and writes the plot as a PNG picture, or the values within the plotted time
  // range as delimited text (tab; comma for a .csv name; a workbook for an .xlsx name).
  void save_picture();
  void save_text();

  QListWidget* sensor_list() const { return sensors_; }
  QCheckBox* cold_junction_box() const { return cold_junction_; }
  QRadioButton* shared_axis_button() const { return shared_axis_; }
  QRadioButton* separate_axes_button() const { return separate_axes_; }
  // "No limits", "Cruise Phase", "EAFT".
  QComboBox* limit_mode_box() const { return limit_mode_; }
  TrendChart* chart() const { return chart_; }
  QLabel* status_label() const { return status_; }

 private:
  QWidget* make_controls();
  bool cold_junction_chosen() const;
  // Makes the series of the ticked sensors: all of them anew, or only those not plotted yet. A
  // cancel or a failure leaves the series plotted as they were, and the ticks with them.
  void remake_series(bool anew = false);
  void show_chosen_series(bool anew);
  void read_limit_file();
  // Hands the series and their limits to the chart.
  void plot_series();
  void show_status();
  QString suggested_file(const QString& ending) const;

  std::vector<TrendSeries> series_;
  std::optional<TestRanges> ranges_;

  QListWidget* sensors_ = nullptr;
  QCheckBox* cold_junction_ = nullptr;
  QRadioButton* shared_axis_ = nullptr;
  QRadioButton* separate_axes_ = nullptr;
  QComboBox* limit_mode_ = nullptr;
  QPushButton* whole_file_ = nullptr;
  QPushButton* save_picture_ = nullptr;
  QPushButton* save_text_ = nullptr;
  TrendChart* chart_ = nullptr;
  QLabel* status_ = nullptr;
};

}  // namespace morvane
