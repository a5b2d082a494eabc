// SPDX-License-Identifier: MIT
// The trend plot and the integrity check on a file of a million housekeeping packets: making
// the series, decimating them for a plot, repainting the window, checking the file. Runs
// offscreen.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QMdiSubWindow>
#include <QRadioButton>
#include <cstdlib>

#include "bench_files.h"
#include "dialogs.h"
#include "integrity_form.h"
#include "main_window.h"
#include "trend_chart.h"
#include "trend_form.h"
#include "decoders/integrity.h"
#include "decoders/trend_plot.h"

namespace morvane {
namespace {

// The simulated instrument sends a little over two housekeeping packets a frame (1345 in the 595
// frames of a cycle); this many frames hold about a million of them.
constexpr uint64_t kMillionPacketBytes = 445'000ULL * 282;

const std::string& million_packet_file() {
  static const std::string path = bench::frames_file(kMillionPacketBytes);
  return path;
}

// A window on the file, loaded once for all the benchmarks.
EGSE_MDI& loaded_window() {
  static ConsoleDialogs dialogs;
  static EGSE_MDI* window = [] {
    auto* made = new EGSE_MDI(bench::demo_configuration(), dialogs);
    made->set_byte_reverse(true);
    made->resize(1400, 900);
    made->load_file(FileFormat::CSS, QString::fromStdString(million_packet_file()));
    made->show();
    return made;
  }();
  return *window;
}

// The series of 1 and 4 sensors over every housekeeping packet (the cold-junction term added).
void BM_TrendSeries(benchmark::State& state) {
  const Session& session = loaded_window().session();
  const std::vector<int> all{28, 29, 1, 33};
  const std::vector<int> sensors(all.begin(), all.begin() + state.range(0));
  size_t points = 0;
  for (auto _ : state) {
    const auto series = trend_series(session, sensors, true);
    points = series.front().size();
    benchmark::DoNotOptimize(series.data());
  }
  state.counters["hk_packets"] = static_cast<double>(points);
  state.counters["points_per_s"] =
      benchmark::Counter(static_cast<double>(points * sensors.size()), benchmark::Counter::kIsIterationInvariantRate);
}
BENCHMARK(BM_TrendSeries)->Arg(1)->Arg(4)->ArgName("sensors")->Unit(benchmark::kMillisecond);

// One plot of two series over the whole file at a window's width: the decimation and ranges.
void BM_MakeTrendPlot(benchmark::State& state) {
  const auto series = trend_series(loaded_window().session(), {28, 29}, true);
  const TimeWindow window = whole_time_window(series);
  for (auto _ : state) {
    benchmark::DoNotOptimize(make_trend_plot(series, {TrendLimits{0, 40}, std::nullopt}, window, {true, 1000, 8, 6}));
  }
  state.counters["points"] = static_cast<double>(2 * series.front().size());
}
BENCHMARK(BM_MakeTrendPlot)->Unit(benchmark::kMillisecond);

TrendForm* open_trend(EGSE_MDI& window) {
  auto* form = static_cast<TrendForm*>(window.show_view(ViewKind::Trend));
  window.frame_of(form)->resize(1300, 800);
  form->set_sensor_chosen(28, true);
  form->set_sensor_chosen(29, true);
  form->separate_axes_button()->setChecked(true);
  QApplication::processEvents();
  return form;
}

// A repaint after the window moved (a wheel notch or a drag): the plot made again and drawn.
void BM_RepaintAfterZoom(benchmark::State& state) {
  TrendForm* form = open_trend(loaded_window());
  TrendChart* chart = form->chart();
  const TimeWindow whole = chart->window();
  bool in = true;
  for (auto _ : state) {
    chart->zoom_about((whole.from + whole.to) / 2, in ? 0.8 : 1.25);
    in = !in;
    chart->repaint();
  }
  state.counters["columns"] = chart->plot().columns;
  state.counters["points"] = static_cast<double>(2 * form->series().front().size());
  loaded_window().close_view(ViewKind::Trend);
}
BENCHMARK(BM_RepaintAfterZoom)->Unit(benchmark::kMillisecond);

// A repaint of an unchanged plot (another window uncovered it): drawing only.
void BM_RepaintUnchanged(benchmark::State& state) {
  TrendForm* form = open_trend(loaded_window());
  TrendChart* chart = form->chart();
  chart->repaint();
  for (auto _ : state) chart->repaint();
  state.counters["columns"] = chart->plot().columns;
  loaded_window().close_view(ViewKind::Trend);
}
BENCHMARK(BM_RepaintUnchanged)->Unit(benchmark::kMillisecond);

// Ticking two sensors in an open window: their series made and the plot drawn.
void BM_TickTwoSensors(benchmark::State& state) {
  EGSE_MDI& window = loaded_window();
  for (auto _ : state) {
    state.PauseTiming();
    auto* form = static_cast<TrendForm*>(window.show_view(ViewKind::Trend));
    window.frame_of(form)->resize(1300, 800);
    QApplication::processEvents();
    state.ResumeTiming();
    form->set_sensor_chosen(28, true);
    form->set_sensor_chosen(29, true);
    form->chart()->repaint();
    state.PauseTiming();
    window.close_view(ViewKind::Trend);
    QApplication::processEvents();
    state.ResumeTiming();
  }
}
BENCHMARK(BM_TickTwoSensors)->Unit(benchmark::kMillisecond)->Iterations(3);

// The integrity check of the whole file, and opening its window (check and first rows painted).
void BM_IntegrityCheck(benchmark::State& state) {
  const Session& session = loaded_window().session();
  size_t findings = 0;
  for (auto _ : state) findings = check_integrity(session).findings.size();
  state.counters["findings"] = static_cast<double>(findings);
  state.counters["entries"] = static_cast<double>(session.catalogue.HK_Count() + session.catalogue.Science_Count() +
                                                  session.catalogue.Information_Count());
}
BENCHMARK(BM_IntegrityCheck)->Unit(benchmark::kMillisecond);

void BM_OpenIntegrityWindow(benchmark::State& state) {
  EGSE_MDI& window = loaded_window();
  for (auto _ : state) {
    ChildView* form = window.show_view(ViewKind::Integrity);
    QApplication::processEvents();
    benchmark::DoNotOptimize(form->grab());
    state.PauseTiming();
    window.close_view(ViewKind::Integrity);
    QApplication::processEvents();
    state.ResumeTiming();
  }
}
BENCHMARK(BM_OpenIntegrityWindow)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace
}  // namespace morvane
