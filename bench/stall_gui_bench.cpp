// SPDX-License-Identifier: MIT
// What a user does after loading a big file (1 GiB, 8.6 million housekeeping packets), measured
// as the longest time the window's event loop went without turning: ticking every sensor of the
// trend window at once and zooming its plot, opening the integrity window and changing its
// threshold, filtering the summary's housekeeping list and scrolling it. Long work runs on a
// worker thread, so no stall should pass 100 ms. Runs offscreen.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <algorithm>
#include <functional>
#include <QElapsedTimer>
#include <QComboBox>
#include <QLineEdit>
#include <QListView>
#include <QListWidget>
#include <QMdiSubWindow>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QTimer>

#include "bench_files.h"
#include "dialogs.h"
#include "integrity_form.h"
#include "main_window.h"
#include "summary_find_bar.h"
#include "summary_view.h"
#include "trend_chart.h"
#include "trend_form.h"

namespace morvane {
namespace {

EGSE_MDI& loaded_window() {
  static ConsoleDialogs dialogs;
  static EGSE_MDI* window = [] {
    auto* made = new EGSE_MDI(bench::demo_configuration(), dialogs);
    made->resize(1400, 900);
    made->show();
    made->loadFile(FileFormat::CSS, QString::fromStdString(bench::frames_file(bench::bench_bytes())));
    QApplication::processEvents();
    return made;
  }();
  return *window;
}

// The longest gap between the turns of the event loop while an action runs: a timer that would
// fire every millisecond notes how late each firing is.
class StallMeter {
 public:
  StallMeter() {
    beat_.setInterval(1);
    QObject::connect(&beat_, &QTimer::timeout, [this] {
      const qint64 now = clock_.nsecsElapsed();
      longest_ = std::max(longest_, now - last_);
      last_ = now;
    });
  }
  // Runs the action from the event loop, then lets the loop settle (paints included).
  double longest_ms(const std::function<void()>& action) {
    longest_ = 0;
    clock_.start();
    last_ = clock_.nsecsElapsed();
    beat_.start();
    bool done = false;
    QElapsedTimer settle;
    QTimer::singleShot(0, [&] {
      action();
      done = true;
      settle.start();
    });
    while (!done || settle.elapsed() < 300) QApplication::processEvents(QEventLoop::AllEvents, 10);
    beat_.stop();
    return static_cast<double>(longest_) / 1e6;
  }

 private:
  QTimer beat_;
  QElapsedTimer clock_;
  qint64 last_ = 0;
  qint64 longest_ = 0;
};

void report(benchmark::State& state, const std::vector<double>& stalls) {
  state.counters["longest_stall_ms"] = *std::max_element(stalls.begin(), stalls.end());
}

// Every sensor ticked at once (the last tick starts the work for all of them), then the plot
// of 36 series over every packet painted.
void BM_StallTickingEverySensor(benchmark::State& state) {
  EGSE_MDI& window = loaded_window();
  StallMeter meter;
  std::vector<double> stalls;
  for (auto _ : state) {
    auto* form = static_cast<Trend_Form*>(window.showView(ViewKind::Trend));
    window.frameOf(form)->resize(1300, 800);
    QApplication::processEvents();
    {
      const QSignalBlocker quiet(form->sensorList());
      for (int s = 1; s < form->sensorList()->count(); ++s) form->setSensorChosen(s, true);
    }
    stalls.push_back(meter.longest_ms([&] { form->setSensorChosen(form->sensorList()->count(), true); }));
    state.PauseTiming();
    window.closeView(ViewKind::Trend);
    QApplication::processEvents();
    state.ResumeTiming();
  }
  report(state, stalls);
}
BENCHMARK(BM_StallTickingEverySensor)->Unit(benchmark::kMillisecond)->Iterations(2);

// With every sensor plotted, the plot zoomed in about its middle, then the whole file again.
void BM_StallZoomingEverySensor(benchmark::State& state) {
  EGSE_MDI& window = loaded_window();
  auto* form = static_cast<Trend_Form*>(window.showView(ViewKind::Trend));
  window.frameOf(form)->resize(1300, 800);
  {
    const QSignalBlocker quiet(form->sensorList());
    for (int s = 1; s < form->sensorList()->count(); ++s) form->setSensorChosen(s, true);
  }
  form->setSensorChosen(form->sensorList()->count(), true);
  StallMeter meter;
  meter.longest_ms([] {});  // the first plot drawn
  std::vector<double> zoom, whole;
  for (auto _ : state) {
    TrendChart* chart = form->chart();
    const Time_Window shown = chart->window();
    zoom.push_back(meter.longest_ms([&] { chart->zoomAbout((shown.from + shown.to) / 2, 0.5); }));
    whole.push_back(meter.longest_ms([&] { chart->showWholeFile(); }));
  }
  state.counters["zoom_stall_ms"] = *std::max_element(zoom.begin(), zoom.end());
  state.counters["whole_stall_ms"] = *std::max_element(whole.begin(), whole.end());
  window.closeView(ViewKind::Trend);
  QApplication::processEvents();
}
BENCHMARK(BM_StallZoomingEverySensor)->Unit(benchmark::kMillisecond)->Iterations(2);

// The summary of the whole file: its housekeeping list filtered to the complete packets of the
// middle half of the file's time (the last field typed, then the search run), cleared, and
// scrolled to its middle and its end.
void BM_StallSummary(benchmark::State& state) {
  EGSE_MDI& window = loaded_window();
  auto* summary = static_cast<Summary*>(window.showView(ViewKind::Summary));
  Summary_Find_Bar* bar = summary->findBar(0);
  QApplication::processEvents();
  const EntryList& hk = window.session().catalogue.HK_List;
  const int32_t first = hk[1].Lander_Time;
  const int32_t last = hk[hk.size()].Lander_Time;
  StallMeter meter;
  std::vector<double> filter, clear, scroll;
  for (auto _ : state) {
    bar->refreshLabels();
    bar->labelChoice()->setCurrentIndex(bar->labelChoice()->findText("Complete"));
    bar->field(Summary_Find_Bar::Field::TimeFrom)->setText(QString::number(first + (last - first) / 4));
    filter.push_back(meter.longest_ms([&] {
      bar->field(Summary_Find_Bar::Field::TimeTo)->setText(QString::number(last - (last - first) / 4));
    }));
    while (bar->searching()) QApplication::processEvents();
    clear.push_back(meter.longest_ms([&] { bar->clear(); }));
    QScrollBar* bar_of_list = summary->list(0)->verticalScrollBar();
    scroll.push_back(meter.longest_ms([&] { bar_of_list->setValue(bar_of_list->maximum() / 2); }));
    scroll.push_back(meter.longest_ms([&] { bar_of_list->setValue(bar_of_list->maximum()); }));
    bar_of_list->setValue(0);
  }
  state.counters["filter_stall_ms"] = *std::max_element(filter.begin(), filter.end());
  state.counters["clear_stall_ms"] = *std::max_element(clear.begin(), clear.end());
  state.counters["scroll_stall_ms"] = *std::max_element(scroll.begin(), scroll.end());
  window.closeView(ViewKind::Summary);
  QApplication::processEvents();
}
BENCHMARK(BM_StallSummary)->Unit(benchmark::kMillisecond)->Iterations(2);

// Opening the integrity window (the file checked), then a new time-jump threshold.
void BM_StallIntegrity(benchmark::State& state) {
  EGSE_MDI& window = loaded_window();
  StallMeter meter;
  std::vector<double> opening, threshold;
  for (auto _ : state) {
    Integrity_Form* form = nullptr;
    opening.push_back(
        meter.longest_ms([&] { form = static_cast<Integrity_Form*>(window.showView(ViewKind::Integrity)); }));
    threshold.push_back(meter.longest_ms([&] { form->timeJumpField()->setValue(form->timeJumpField()->value() + 1); }));
    state.PauseTiming();
    window.closeView(ViewKind::Integrity);
    QApplication::processEvents();
    state.ResumeTiming();
  }
  state.counters["open_stall_ms"] = *std::max_element(opening.begin(), opening.end());
  state.counters["threshold_stall_ms"] = *std::max_element(threshold.begin(), threshold.end());
}
BENCHMARK(BM_StallIntegrity)->Unit(benchmark::kMillisecond)->Iterations(2);

}  // namespace
}  // namespace morvane
