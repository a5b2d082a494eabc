// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <vector>

#include "child_view.h"
#include "functest/test_ranges.h"
#include "views/trend_series.h"

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
class Trend_Form : public ChildView {
  Q_OBJECT

 public:
  explicit Trend_Form(Workstation& workstation);
  ~Trend_Form() override;

  void updateRealtime() override;
  void sessionReloaded() override;

  // The sensors ticked, in table order, and ticking one (as a click on its box does).
  std::vector<int> chosenSensors() const;
  void setSensorChosen(int sensor, bool chosen);
  // The series plotted, one per ticked sensor in table order.
  const std::vector<Trend_Series>& series() const { return series_; }
  // The limit file read for the mode chosen, if there is one.
  const std::optional<Test_Ranges>& limitFile() const { return ranges_; }

  // Asks for a file and writes the plot as a PNG picture, or the values within the plotted time
  // range as delimited text (tab; comma for a .csv name; a workbook for an .xlsx name).
  void savePicture();
  void saveText();

  QListWidget* sensorList() const { return sensors_; }
  QCheckBox* coldJunctionBox() const { return cold_junction_; }
  QRadioButton* sharedAxisButton() const { return shared_axis_; }
  QRadioButton* separateAxesButton() const { return separate_axes_; }
  // "No limits", "Cruise Phase", "EAFT".
  QComboBox* limitModeBox() const { return limit_mode_; }
  TrendChart* chart() const { return chart_; }
  QLabel* statusLabel() const { return status_; }

 private:
  QWidget* makeControls();
  bool coldJunction() const;
  // Makes the series of the ticked sensors: all of them anew, or only those not plotted yet. A
  // cancel or a failure leaves the series plotted as they were, and the ticks with them.
  void remakeSeries(bool anew = false);
  void showChosenSeries(bool anew);
  void readLimitFile();
  // Hands the series and their limits to the chart.
  void plotSeries();
  void showStatus();
  QString suggestedFile(const QString& ending) const;

  std::vector<Trend_Series> series_;
  std::optional<Test_Ranges> ranges_;

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
