// SPDX-License-Identifier: MIT
// The trend series of every sensor over every housekeeping packet of a big file (1 GiB: 8.6
// million packets), and the plot of them across a window's width, with the demo configuration.
#include <benchmark/benchmark.h>

#include <numeric>

#include "bench_files.h"
#include "core/session.h"
#include "decoders/trend_plot.h"
#include "decoders/trend_series.h"

namespace morvane {
namespace {

const Session& loaded_session() {
  static const Session& session = *[] {
    auto* s = new Session;
    s->config = bench::demo_configuration();
    load_telemetry(*s, bench::frames_file(bench::bench_bytes()), FileFormat::CSS);
    return s;
  }();
  return session;
}

std::vector<int> every_sensor(const Session& session) {
  std::vector<int> sensors(static_cast<size_t>(session.config.Sensor_Count()));
  std::iota(sensors.begin(), sensors.end(), 1);
  return sensors;
}

// Ticking every sensor at once, with the cold-junction term (the window's default).
void BM_TrendSeriesOfEverySensor(benchmark::State& state) {
  const Session& session = loaded_session();
  const std::vector<int> sensors = every_sensor(session);
  for (auto _ : state) {
    const auto series = trend_series(session, sensors, state.range(0) != 0);
    benchmark::DoNotOptimize(series.data());
  }
  const double packets = session.catalogue.HK_Count();
  state.counters["hk_packets"] = packets;
  state.counters["points_per_s"] =
      benchmark::Counter(packets * static_cast<double>(sensors.size()), benchmark::Counter::kIsIterationInvariantRate);
}
BENCHMARK(BM_TrendSeriesOfEverySensor)->Arg(1)->Arg(0)->ArgName("cold_junction")->Unit(benchmark::kMillisecond);

// The plot of every sensor over the whole file, 1000 pixel columns, one lane each.
void BM_TrendPlotOfEverySensor(benchmark::State& state) {
  const Session& session = loaded_session();
  const auto series = trend_series(session, every_sensor(session), true);
  const TimeWindow window = whole_time_window(series);
  for (auto _ : state) {
    benchmark::DoNotOptimize(make_trend_plot(series, {}, window, {true, 1000, 8, 6}));
  }
}
BENCHMARK(BM_TrendPlotOfEverySensor)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace morvane

BENCHMARK_MAIN();
