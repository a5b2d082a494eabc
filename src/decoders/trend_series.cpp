// SPDX-License-Identifier: MIT
#include "decoders/trend_series.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>

#include "core/conversion.h"
#include "core/error.h"
#include "core/free_format_reader.h"
#include "decoders/hk_sensors.h"

namespace morvane {

namespace {
constexpr int kBoardSensor = 28;
}  // namespace

TrendSeries::TrendSeries(int number_, std::string name_, std::string unit_,
                           const std::vector<std::pair<int32_t, double>>& points)
    : number(number_), name(std::move(name_)), unit(std::move(unit_)), packets_(std::make_shared<TrendPackets>()),
      explicit_(true) {
  for (const auto& [time, value] : points) {
    packets_->times.push_back(time);
    values_.push_back(value);
  }
}

std::vector<std::pair<int32_t, double>> TrendSeries::points() const {
  std::vector<std::pair<int32_t, double>> all;
  all.reserve(size());
  for_each_point([&](int32_t time, double value) { all.emplace_back(time, value); });
  return all;
}

namespace {

// The extreme finite value of the inputs that occur (or of every point).
template <typename Better>
double extreme_value(const std::vector<double>& values, const std::vector<uint8_t>& known, bool every, double none,
                     Better better) {
  double extreme = none;
  for (size_t c = 0; c < values.size(); ++c) {
    if ((every || known[c]) && std::isfinite(values[c]) && better(values[c], extreme)) extreme = values[c];
  }
  return extreme;
}

}  // namespace

double TrendSeries::lowest_value() const {
  return extreme_value(values_, known_, explicit_, std::numeric_limits<double>::infinity(),
                       [](double a, double b) { return a < b; });
}

double TrendSeries::highest_value() const {
  return extreme_value(values_, known_, explicit_, -std::numeric_limits<double>::infinity(),
                       [](double a, double b) { return a > b; });
}

// Fills series from the session's housekeeping bytes: the packets' times and board bytes once
// per shared set, each series' bytes, and the value of each input the first time it is met.
class TrendSeriesBuilder {
 public:
  TrendSeriesBuilder(const Session& session, const Configuration& config, bool cold_junction,
                       ProgressFunction progress = {})
      : session_(session), config_(config), table_(session.HK_Sensor_Data), cold_junction_(cold_junction),
        progress_(std::move(progress)) {}

  // A series of sensor `number` over no packets yet, on the given packets.
  TrendSeries start(int number, std::shared_ptr<TrendPackets> packets) const {
    const SensorRecord& record = config_.sensor(number);
    TrendSeries one;
    one.number = number;
    one.name = record.Sensor_Name;
    one.unit = record.Sensor_Unit;
    one.packets_ = std::move(packets);
    choose_inputs(one);
    return one;
  }

  // A series made with the other cold-junction choice converts its inputs anew.
  void choose_inputs(TrendSeries& one) const {
    one.cold_junction_ = cold_junction_;
    one.by_board_ = cold_junction_ && is_thermocouple(one.number);
    const size_t inputs = one.by_board_ ? 256 * 256 : 256;
    one.values_.assign(inputs, 0);
    one.known_.assign(inputs, 0);
  }

  // Brings every series to the whole housekeeping list, each with the builder's cold-junction
  // choice. A failure leaves the series as they were.
  void extend(std::vector<TrendSeries>& series) const {
    // Only a series that changes its choice loses anything on the way: its values.
    struct Kept {
      size_t index;
      bool by_board, cold_junction;
      std::vector<double> values;
      std::vector<uint8_t> known;
    };
    std::vector<Kept> kept;
    const size_t held = series.front().size();
    for (auto& one : series) {
      if (one.explicit_) raise(ErrorNumber::SubscriptOutOfRange, "a series of given points cannot grow");
      if (one.size() != held) raise(ErrorNumber::SubscriptOutOfRange, "trend series of different lengths");
    }
    try {
      for (size_t s = 0; s < series.size(); ++s) {
        TrendSeries& one = series[s];
        if (one.explicit_ || one.cold_junction_ == cold_junction_) continue;
        kept.push_back({s, one.by_board_, one.cold_junction_, std::move(one.values_), std::move(one.known_)});
        choose_inputs(one);
      }
      grow(series);
      // The points held from before, in the values of the new choice.
      for (const Kept& k : kept) {
        TrendSeries& one = series[k.index];
        for (size_t p = 0; p < held; ++p) known_value(one, one.code(p));
      }
    } catch (...) {
      for (auto& one : series) one.bytes_.truncate(held);
      for (Kept& k : kept) {
        TrendSeries& one = series[k.index];
        one.by_board_ = k.by_board;
        one.cold_junction_ = k.cold_junction;
        one.values_ = std::move(k.values);
        one.known_ = std::move(k.known);
      }
      throw;
    }
  }

 private:
  // Points before those held keep their bytes; all of them get their values converted when not
  // yet known.
  void grow(std::vector<TrendSeries>& series) const {
    const int32_t last = session_.catalogue.HK_Count();
    const size_t held = series.front().size();
    if (static_cast<size_t>(last) <= held) return;
    extend_packets(series, last);
    // The first new entry goes through in the order the housekeeping page would meet it, so a
    // conversion that fails (a pressure record missing, C1 = C2) fails as it always did. No
    // conversion depends on the byte for whether it fails.
    const int32_t entry = static_cast<int32_t>(held) + 1;
    if (cold_junction_) board_term(table_.at(kBoardSensor, entry));
    for (auto& one : series) {
      const uint8_t byte = table_.at(one.number, entry);
      known_value(one, one.by_board_ ? one.packets_->boards[held] * 256u + byte : byte);
    }
    if (table_.entries() < last) table_.at(series.front().number, last);  // bytes missing
    for (auto& one : series) one.bytes_ = table_.column(one.number, last);
    // A block of rows at a time, each series in turn: the table is read from memory once. Blocks
    // start at multiples of their size, so none crosses a chunk of the table.
    constexpr size_t kBlockRows = 4096;
    const size_t end = static_cast<size_t>(last);
    for (size_t from = held + 1; from < end;) {
      const size_t to = std::min((from / kBlockRows + 1) * kBlockRows, end);
      if (progress_ && from / kBlockRows % 64 == 0) {
        progress_(static_cast<int64_t>(from - held), static_cast<int64_t>(end - held));
      }
      for (auto& one : series) convert_inputs(one, from, to);
      from = to;
    }
  }

  void extend_packets(std::vector<TrendSeries>& series, int32_t last) const {
    std::set<TrendPackets*> done;
    const EntryList& list = session_.catalogue.HK_List;
    const bool boards = table_.sensors() >= kBoardSensor;
    for (auto& one : series) {
      TrendPackets& packets = *one.packets_;
      if (!done.insert(&packets).second) continue;
      if (packets.times.size() < static_cast<size_t>(last)) {
        packets.times.reserve(static_cast<size_t>(last));
        for (int32_t k = static_cast<int32_t>(packets.times.size()) + 1; k <= last; ++k) {
          packets.times.push_back(list[k].Lander_Time);
        }
      }
      if (boards && packets.boards.size() < static_cast<size_t>(last)) {
        packets.boards.reserve(static_cast<size_t>(last));
        for (int32_t k = static_cast<int32_t>(packets.boards.size()) + 1; k <= last; ++k) {
          packets.boards.push_back(table_.row(k)[kBoardSensor - 1]);
        }
      }
    }
  }

  double board_term(uint8_t board) const {
    if (!board_known_[board]) {
      board_terms_[board] = board_cold_junction_term(config_, board);
      board_known_[board] = 1;
    }
    return board_terms_[board];
  }

  void known_value(TrendSeries& one, size_t code) const {
    if (one.known_[code]) return;
    const uint8_t byte = static_cast<uint8_t>(code & 255);
    const double term = one.by_board_ ? board_term(static_cast<uint8_t>(code >> 8)) : 0;
    const SensorValue value = hk_byte_value(config_, one.number, byte, term);
    one.values_[code] = value.value;
    one.unit = value.unit;
    one.known_[code] = 1;
  }

  // Converts the inputs of points from..to - 1 (0-based, within one chunk of the table) met
  // for the first time.
  void convert_inputs(TrendSeries& one, size_t from, size_t to) const {
    const uint8_t* bytes = one.bytes_.at(from);
    const size_t stride = one.bytes_.stride();
    const uint8_t* known = one.known_.data();
    const size_t n = to - from;
    if (one.by_board_) {
      const uint8_t* boards = one.packets_->boards.data() + from;
      for (size_t i = 0; i < n; ++i) {
        const size_t code = boards[i] * 256u + bytes[i * stride];
        if (!known[code]) known_value(one, code);
      }
    } else {
      for (size_t i = 0; i < n; ++i) {
        if (!known[bytes[i * stride]]) known_value(one, bytes[i * stride]);
      }
    }
  }

  const Session& session_;
  const Configuration& config_;
  const HKSensorTable& table_;
  bool cold_junction_;
  ProgressFunction progress_;
  mutable double board_terms_[256] = {};
  mutable uint8_t board_known_[256] = {};
};

std::vector<TrendSeries> trend_series(const Session& session, const std::vector<int>& sensors, bool cold_junction,
                                       const TrendMaking& making) {
  const TrendSeriesBuilder builder(session, making.config ? *making.config : session.config, cold_junction,
                                     making.progress);
  // Packets that cover the whole list are only read: series on the window's thread may share them.
  std::shared_ptr<TrendPackets> packets;
  const TrendSeries* shown = making.alongside && !making.alongside->empty() ? &making.alongside->front() : nullptr;
  const size_t whole = static_cast<size_t>(session.catalogue.HK_Count());
  const bool boards_whole = session.HK_Sensor_Data.sensors() < kBoardSensor ||
                            (shown && shown->packets() && shown->packets()->boards.size() == whole);
  if (shown && shown->packets() && shown->packets()->times.size() == whole && shown->size() == whole && boards_whole) {
    packets = shown->packets();
  } else {
    packets = std::make_shared<TrendPackets>();
  }
  std::vector<TrendSeries> series;
  for (int number : sensors) series.push_back(builder.start(number, packets));
  if (!series.empty()) builder.extend(series);
  return series;
}

void extend_trend_series(const Session& session, std::vector<TrendSeries>& series, bool cold_junction) {
  if (series.empty()) return;
  TrendSeriesBuilder(session, session.config, cold_junction).extend(series);
}

namespace {

std::vector<ColumnExtent> nonempty_columns(const std::vector<ColumnExtent>& by_column) {
  std::vector<ColumnExtent> extents;
  for (size_t c = 0; c < by_column.size(); ++c) {
    const ColumnExtent& extent = by_column[c];
    if (extent.low <= extent.high) extents.push_back(ColumnExtent{static_cast<int>(c), extent.low, extent.high});
  }
  return extents;
}

}  // namespace

std::vector<ColumnExtent> decimate_min_max(const TrendSeries& series, double time_from, double time_to,
                                            int columns) {
  if (columns <= 0 || !(time_to > time_from)) return {};
  const double width = (time_to - time_from) / columns;
  std::vector<ColumnExtent> by_column(static_cast<size_t>(columns), ColumnExtent{0, INFINITY, -INFINITY});
  series.for_each_point([&](int32_t time, double value) {
    if (time < time_from || time > time_to || !std::isfinite(value)) return;
    const int column = std::min(columns - 1, static_cast<int>((time - time_from) / width));
    ColumnExtent& extent = by_column[static_cast<size_t>(column)];
    extent.low = std::min(extent.low, value);
    extent.high = std::max(extent.high, value);
  });
  return nonempty_columns(by_column);
}

// Decimates the series that share one set of packets together.
class TrendDecimator {
 public:
  TrendDecimator(double time_from, double time_to, int columns, const std::atomic<bool>* stop)
      : from_(time_from), to_(time_to), columns_(columns), width_((time_to - time_from) / columns), stop_(stop) {}

  void decimate(const std::vector<const TrendSeries*>& group, std::vector<std::vector<ColumnExtent>*> out) const {
    const TrendPackets& packets = *group.front()->packets_;
    const size_t n = group.front()->size();
    // Each input's value as the lowest and the highest candidate: a value that is not finite
    // takes part in neither.
    std::vector<std::vector<double>> lows(group.size()), highs(group.size());
    std::vector<std::vector<ColumnExtent>> by_column(
        group.size(), std::vector<ColumnExtent>(static_cast<size_t>(columns_), ColumnExtent{0, INFINITY, -INFINITY}));
    for (size_t s = 0; s < group.size(); ++s) {
      for (const double value : group[s]->values_) {
        lows[s].push_back(std::isfinite(value) ? value : INFINITY);
        highs[s].push_back(std::isfinite(value) ? value : -INFINITY);
      }
    }
    // A block of packets at a time: the runs of packets that fall in one column are found once
    // for all the series, and each run's lowest and highest value gathered in registers.
    constexpr size_t kBlock = 4096;
    struct Run {
      size_t begin, end;
      int column;
    };
    std::vector<Run> runs;
    for (size_t first = 0; first < n; first += kBlock) {
      if (stopped()) return;
      const size_t count = std::min(kBlock, n - first);
      runs.clear();
      for (size_t i = 0; i < count; ++i) {
        const int32_t time = packets.times[first + i];
        const int column =
            time < from_ || time > to_ ? -1 : std::min(columns_ - 1, static_cast<int>((time - from_) / width_));
        if (!runs.empty() && runs.back().column == column && runs.back().end == i) {
          ++runs.back().end;
        } else {
          runs.push_back(Run{i, i + 1, column});
        }
      }
      for (size_t s = 0; s < group.size(); ++s) {
        const TrendSeries& one = *group[s];
        const uint8_t* bytes = one.bytes_.at(first);  // blocks lie within a chunk of the table
        const size_t stride = one.bytes_.stride();
        const uint8_t* boards = one.by_board_ ? packets.boards.data() + first : nullptr;
        for (const Run& run : runs) {
          if (run.column < 0) continue;
          const auto [low, high] = boards ? run_extent(lows[s].data(), highs[s].data(), run, [&](size_t i) {
            return boards[i] * 256u + bytes[i * stride];
          })
                                          : run_extent(lows[s].data(), highs[s].data(), run,
                                                       [&](size_t i) { return static_cast<unsigned>(bytes[i * stride]); });
          ColumnExtent& extent = by_column[s][static_cast<size_t>(run.column)];
          extent.low = std::min(extent.low, low);
          extent.high = std::max(extent.high, high);
        }
      }
    }
    for (size_t s = 0; s < group.size(); ++s) *out[s] = nonempty_columns(by_column[s]);
  }

  // Every series: those that share their packets together, series of given points alone.
  void decimate_all(const std::vector<TrendSeries>& series, std::vector<std::vector<ColumnExtent>>& traces) const {
    std::vector<bool> done(series.size(), false);
    for (size_t s = 0; s < series.size(); ++s) {
      if (done[s] || stopped()) continue;
      if (series[s].explicit_ || !series[s].packets_) {
        traces[s] = decimate_min_max(series[s], from_, to_, columns_);
        continue;
      }
      std::vector<const TrendSeries*> group;
      std::vector<std::vector<ColumnExtent>*> out;
      for (size_t t = s; t < series.size(); ++t) {
        if (!done[t] && !series[t].explicit_ && series[t].packets_ == series[s].packets_ &&
            series[t].size() == series[s].size()) {
          group.push_back(&series[t]);
          out.push_back(&traces[t]);
          done[t] = true;
        }
      }
      decimate(group, out);
    }
  }

 private:
  bool stopped() const { return stop_ && stop_->load(std::memory_order_relaxed); }

  // The lowest and highest candidate over packets run.begin..run.end - 1, four at a time so that
  // the comparisons do not wait on one another.
  template <typename Run, typename Code>
  static std::pair<double, double> run_extent(const double* low, const double* high, const Run& run, Code code) {
    double l[4] = {INFINITY, INFINITY, INFINITY, INFINITY};
    double h[4] = {-INFINITY, -INFINITY, -INFINITY, -INFINITY};
    size_t i = run.begin;
    for (; i + 4 <= run.end; i += 4) {
      for (size_t k = 0; k < 4; ++k) {
        const unsigned c = code(i + k);
        l[k] = std::min(l[k], low[c]);
        h[k] = std::max(h[k], high[c]);
      }
    }
    for (; i < run.end; ++i) {
      l[0] = std::min(l[0], low[code(i)]);
      h[0] = std::max(h[0], high[code(i)]);
    }
    return {std::min(std::min(l[0], l[1]), std::min(l[2], l[3])), std::max(std::max(h[0], h[1]), std::max(h[2], h[3]))};
  }

  double from_, to_;
  int columns_;
  double width_;
  const std::atomic<bool>* stop_;
};

std::vector<std::vector<ColumnExtent>> decimate_min_max(const std::vector<TrendSeries>& series, double time_from,
                                                         double time_to, int columns,
                                                         const std::atomic<bool>* stop) {
  std::vector<std::vector<ColumnExtent>> traces(series.size());
  if (columns <= 0 || !(time_to > time_from)) return traces;
  TrendDecimator(time_from, time_to, columns, stop).decimate_all(series, traces);
  return traces;
}

std::vector<int> parse_sensor_list(const std::string& text, int sensor_count) {
  std::vector<int> sensors;
  if (text == "all") {
    for (int s = 1; s <= sensor_count; ++s) sensors.push_back(s);
    return sensors;
  }
  size_t start = 0;
  while (start <= text.size()) {
    const size_t comma = std::min(text.find(',', start), text.size());
    const std::string item = text.substr(start, comma - start);
    double number = 0;
    if (!parse_number(item, number) || number != std::floor(number) || number < 1 || number > sensor_count) {
      raise(ErrorNumber::SubscriptOutOfRange, "\"" + item + "\" is not a sensor number from 1 to " +
                                                  std::to_string(sensor_count));
    }
    sensors.push_back(static_cast<int>(number));
    start = comma + 1;
  }
  return sensors;
}

}  // namespace morvane
