// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "core/session.h"

namespace morvane {

// The housekeeping packets a set of series covers, entries 1..times.size() of the list: their
// lander times and board temperature (sensor 28) bytes, shared by every series made together.
struct TrendPackets {
  std::vector<int32_t> times;
  std::vector<uint8_t> boards;  // empty when the sensor table has no sensor 28
};

// One sensor over every housekeeping packet of the file: (lander time, value) in catalogue order,
// each value as the housekeeping page computes it for that packet. A sensor's value depends only
// on its byte and, for a thermocouple with the cold-junction term, on the board temperature byte,
// so a series reads each packet's byte where the load keeps it (the session's housekeeping byte
// table, shared, never copied) and converts every distinct input once: a million points cost
// nothing beyond their times.
class TrendSeries {
 public:
  int number = 0;
  std::string name;
  std::string unit;

  TrendSeries() = default;
  // A series of given points (plots and tables made without a file).
  TrendSeries(int number, std::string name, std::string unit, const std::vector<std::pair<int32_t, double>>& points);

  size_t size() const { return explicit_ ? values_.size() : bytes_.size(); }
  bool empty() const { return size() == 0; }
  int32_t time(size_t p) const { return packets_->times[p]; }
  double value(size_t p) const { return values_[explicit_ ? p : code(p)]; }
  // Every point, for tests and small files.
  std::vector<std::pair<int32_t, double>> points() const;
  // The earliest and latest lander time and the lowest and highest finite value of the points
  // (infinite when there are none).
  double lowest_value() const;
  double highest_value() const;

  // Calls visit(time, value) for each point in order, without a test per point of how the
  // values are kept.
  template <typename Visit>
  void for_each_point(Visit&& visit) const {
    const size_t n = size();
    const int32_t* times = packets_ ? packets_->times.data() : nullptr;
    const double* values = values_.data();
    if (explicit_) {
      for (size_t p = 0; p < n; ++p) visit(times[p], values[p]);
      return;
    }
    const uint8_t* boards = by_board_ ? packets_->boards.data() : nullptr;
    const size_t stride = bytes_.stride();
    // A chunk of the byte table at a time.
    for (size_t first = 0; first < n; first += HKSensorColumn::kChunkRows) {
      const size_t end = std::min(n, first + HKSensorColumn::kChunkRows);
      const uint8_t* bytes = bytes_.at(first);
      if (boards) {
        for (size_t p = first; p < end; ++p) visit(times[p], values[boards[p] * 256 + bytes[(p - first) * stride]]);
      } else {
        for (size_t p = first; p < end; ++p) visit(times[p], values[bytes[(p - first) * stride]]);
      }
    }
  }

  const std::shared_ptr<TrendPackets>& packets() const { return packets_; }

 private:
  friend class TrendSeriesBuilder;
  friend class TrendDecimator;
  size_t code(size_t p) const { return by_board_ ? packets_->boards[p] * 256 + bytes_[p] : bytes_[p]; }

  std::shared_ptr<TrendPackets> packets_;
  bool explicit_ = false;     // values_ holds one value a point
  bool by_board_ = false;     // a thermocouple with the cold-junction term: values_ by board byte x 256 + byte
  bool cold_junction_ = false;
  HKSensorColumn bytes_;        // the sensor's byte of each packet
  std::vector<double> values_;   // the value of each input (or each point)
  std::vector<uint8_t> known_;   // which inputs were converted
};

// How series are made, besides which: the series already shown, whose packets new ones share
// when they cover the whole list; the tables to convert with (the session's when none: a worker
// thread passes its own copy, since the housekeeping view writes the sensor records as it
// draws); and a progress report, told of the series made, that may throw to stop.
struct TrendMaking {
  const std::vector<TrendSeries>* alongside = nullptr;
  const Configuration* config = nullptr;
  ProgressFunction progress;
};

// The series of each sensor (numbers of the sensor table; outside it is "Subscript out of
// range"), with or without the cold-junction term on the thermocouple channels.
std::vector<TrendSeries> trend_series(const Session& session, const std::vector<int>& sensors, bool cold_junction,
                                       const TrendMaking& making = {});

// Appends the points of housekeeping entries past those the series hold (live follow). Series
// must hold the same packets. A failure leaves them as they were.
void extend_trend_series(const Session& session, std::vector<TrendSeries>& series, bool cold_junction);

// What one pixel column of a plot shows: the lowest and highest value of the points whose time
// falls in it. A million points draw as a few thousand line segments.
struct ColumnExtent {
  int column = 0;
  double low = 0;
  double high = 0;
};
// The columns of [time_from, time_to] (columns > 0) that hold points, in column order.
std::vector<ColumnExtent> decimate_min_max(const TrendSeries& series, double time_from, double time_to,
                                            int columns);
// The same for each of several series at once: series that share their packets find each
// packet's column once, and go through their points a block at a time. Once *stop is set (by
// another thread) it returns soon, with columns that are incomplete and to be dropped.
std::vector<std::vector<ColumnExtent>> decimate_min_max(const std::vector<TrendSeries>& series, double time_from,
                                                         double time_to, int columns,
                                                         const std::atomic<bool>* stop = nullptr);

// Parses a sensor list as users type it: "all", or numbers separated by commas ("1,22,28").
// Anything else is a RuntimeError saying what was wrong.
std::vector<int> parse_sensor_list(const std::string& text, int sensor_count);

}  // namespace morvane
