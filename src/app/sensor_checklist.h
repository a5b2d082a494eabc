// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <vector>

#include "functest/short_test_ranges.h"
#include "decoders/trend_plot.h"

class QComboBox;
class QListWidget;
class QVBoxLayout;
class QWidget;

namespace morvane {

struct Configuration;

// The sensor table as a list of check boxes, "NN  name", for choosing what a trend plots (the
// trend plot, the campaign's trend). Its object name is "SensorList".
QListWidget* make_sensor_checklist(const Configuration& config, QWidget* parent);
// The ticked sensors' numbers, in table order.
std::vector<int> checked_sensors(const QListWidget& list);
// Ticks or clears a sensor's box, as a click on it does.
void check_sensor(QListWidget& list, int sensor, bool checked);

// Adds the row "Limits [No limits | Cruise Phase | EAFT]" to a trend's control column and
// returns its box (object name "LimitMode"), showing the mode of that index.
QComboBox* add_limit_mode_row(QVBoxLayout& column, QWidget* panel, int mode_index);

// The limits each series is held to in a limit file: none without a file, or for a sensor
// without a limit record.
std::vector<std::optional<TrendLimits>> series_limits(const std::vector<TrendSeries>& series,
                                                       const std::optional<TestRanges>& ranges);

}  // namespace morvane
