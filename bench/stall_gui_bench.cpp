// SPDX-License-Identifier: MIT
// What a user does after loading a big file (1 GiB, 8.6 million housekeeping packets), measured
// as the longest time the window's event loop went without turning: ticking every sensor of the
// trend window at once and zooming its plot, opening the integrity window and changing its
// threshold, filtering the summary's housekeeping list and scrolling it, starting an export of
// every housekeeping packet. Long work runs on a worker thread or serves the window as it goes,
// so no stall should pass 100 ms. Runs offscreen.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <QElapsedTimer>
#include <QComboBox>
#include <QLineEdit>
#include <QListView>
#include <QCheckBox>
#include <QListWidget>
#include <QProgressDialog>
#include <QPushButton>
#include <QMdiSubWindow>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QTimer>

#include "bench_files.h"
#include "dialogs.h"
#include "export_form.h"
#include "integrity_form.h"
#include "main_window.h"
#include "summary_find_bar.h"
#include "summary_view.h"
#include "trend_chart.h"
#include "trend_form.h"

namespace morvane {
namespace {

// The dialogs of a user who answers every file dialog with the same file.
class SavingDialogs : public ConsoleDialogs {
 public:
  QString path;
  QString save_file_name(QWidget*, const QString&, const QString&, const QString&) override { return path; }
};

SavingDialogs& bench_dialogs() {
  static SavingDialogs dialogs;
  return dialogs;
}

EGSE_MDI& loaded_window() {
  static EGSE_MDI* window = [] {
    auto* made = new EGSE_MDI(bench::demo_configuration(), bench_dialogs());
    made->resize(1400, 900);
    made->show();
    made->load_file(FileFormat::CSS, QString::fromStdString(bench::frames_file(bench::bench_bytes())));
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

double longest(const std::vector<double>& stalls) { return *std::max_element(stalls.begin(), stalls.end()); }

void close_view(EGSE_MDI& window, ViewKind kind) {
  window.close_view(kind);
  QApplication::processEvents();
}

void report(benchmark::State& state, const std::vector<double>& stalls) {
  state.counters["longest_stall_ms"] = longest(stalls);
}

// Every sensor ticked at once (the last tick starts the work for all of them), then the plot
// of 36 series over every packet painted.
void BM_StallTickingEverySensor(benchmark::State& state) {
  EGSE_MDI& window = loaded_window();
  StallMeter meter;
  std::vector<double> stalls;
  for (auto _ : state) {
    auto* form = static_cast<TrendForm*>(window.show_view(ViewKind::Trend));
    window.frame_of(form)->resize(1300, 800);
    QApplication::processEvents();
    {
      const QSignalBlocker quiet(form->sensor_list());
      for (int s = 1; s < form->sensor_list()->count(); ++s) form->set_sensor_chosen(s, true);
    }
    stalls.push_back(meter.longest_ms([&] { form->set_sensor_chosen(form->sensor_list()->count(), true); }));
    state.PauseTiming();
    close_view(window, ViewKind::Trend);
    state.ResumeTiming();
  }
  report(state, stalls);
}
BENCHMARK(BM_StallTickingEverySensor)->Unit(benchmark::kMillisecond)->Iterations(2);

// With every sensor plotted, the plot zoomed in about its middle, then the whole file again.
void BM_StallZoomingEverySensor(benchmark::State& state) {
  EGSE_MDI& window = loaded_window();
  auto* form = static_cast<TrendForm*>(window.show_view(ViewKind::Trend));
  window.frame_of(form)->resize(1300, 800);
  {
    const QSignalBlocker quiet(form->sensor_list());
    for (int s = 1; s < form->sensor_list()->count(); ++s) form->set_sensor_chosen(s, true);
  }
  form->set_sensor_chosen(form->sensor_list()->count(), true);
  StallMeter meter;
  meter.longest_ms([] {});  // the first plot drawn
  std::vector<double> zoom, whole;
  for (auto _ : state) {
    TrendChart* chart = form->chart();
    const TimeWindow shown = chart->window();
    zoom.push_back(meter.longest_ms([&] { chart->zoom_about((shown.from + shown.to) / 2, 0.5); }));
    whole.push_back(meter.longest_ms([&] { chart->show_whole_file(); }));
  }
  state.counters["zoom_stall_ms"] = longest(zoom);
  state.counters["whole_stall_ms"] = longest(whole);
  close_view(window, ViewKind::Trend);
}
BENCHMARK(BM_StallZoomingEverySensor)->Unit(benchmark::kMillisecond)->Iterations(2);

// The summary of the whole file: its housekeeping list filtered to the complete packets of the
// middle half of the file's time (the last field typed, then the search run), cleared, and
// scrolled to its middle and its end.
void BM_StallSummary(benchmark::State& state) {
  EGSE_MDI& window = loaded_window();
  auto* summary = static_cast<Summary*>(window.show_view(ViewKind::Summary));
  SummaryFindBar* bar = summary->find_bar(0);
  QApplication::processEvents();
  const EntryList& hk = window.session().catalogue.HK_List;
  const int32_t first = hk[1].Lander_Time;
  const int32_t last = hk[hk.size()].Lander_Time;
  StallMeter meter;
  std::vector<double> filter, clear, scroll;
  for (auto _ : state) {
    bar->refresh_labels();
    bar->label_choice()->setCurrentIndex(bar->label_choice()->findText("Complete"));
    bar->field(SummaryFindBar::Field::TimeFrom)->setText(QString::number(first + (last - first) / 4));
    filter.push_back(meter.longest_ms([&] {
      bar->field(SummaryFindBar::Field::TimeTo)->setText(QString::number(last - (last - first) / 4));
    }));
    while (bar->searching()) QApplication::processEvents();
    clear.push_back(meter.longest_ms([&] { bar->clear(); }));
    QScrollBar* bar_of_list = summary->list(0)->verticalScrollBar();
    scroll.push_back(meter.longest_ms([&] { bar_of_list->setValue(bar_of_list->maximum() / 2); }));
    scroll.push_back(meter.longest_ms([&] { bar_of_list->setValue(bar_of_list->maximum()); }));
    bar_of_list->setValue(0);
  }
  state.counters["filter_stall_ms"] = longest(filter);
  state.counters["clear_stall_ms"] = longest(clear);
  state.counters["scroll_stall_ms"] = longest(scroll);
  close_view(window, ViewKind::Summary);
}
BENCHMARK(BM_StallSummary)->Unit(benchmark::kMillisecond)->Iterations(2);

// The housekeeping export of every packet started with its button (and cancelled after 1.5 s):
// the longest stall, and how long its progress dialog took to show.
void BM_StallStartingExport(benchmark::State& state) {
  EGSE_MDI& window = loaded_window();
  auto* form = static_cast<ExportForm*>(window.show_view(ViewKind::ExportHousekeeping));
  QApplication::processEvents();
  const std::string path = bench::bench_dir() + "/stall-export.txt";
  bench_dialogs().path = QString::fromStdString(path);
  StallMeter meter;
  std::vector<double> stalls, shown;
  for (auto _ : state) {
    form->all_box()->setChecked(true);
    QElapsedTimer clock;
    double shown_ms = -1;
    QTimer watch;
    watch.setInterval(5);
    QObject::connect(&watch, &QTimer::timeout, [&] {
      auto* progress = form->findChild<QProgressDialog*>("ExportProgress");
      if (!progress || !progress->isVisible()) return;
      if (shown_ms < 0) shown_ms = static_cast<double>(clock.nsecsElapsed()) / 1e6;
      if (clock.elapsed() > 1500) progress->cancel();
    });
    stalls.push_back(meter.longest_ms([&] {
      clock.start();
      watch.start();
      form->export_button()->click();
    }));
    watch.stop();
    shown.push_back(shown_ms);
  }
  bench_dialogs().path.clear();
  std::remove(path.c_str());
  state.counters["longest_stall_ms"] = longest(stalls);
  state.counters["progress_shown_ms"] = longest(shown);
  close_view(window, ViewKind::ExportHousekeeping);
}
BENCHMARK(BM_StallStartingExport)->Unit(benchmark::kMillisecond)->Iterations(2);

// Opening the integrity window (the file checked), then a new time-jump threshold.
void BM_StallIntegrity(benchmark::State& state) {
  EGSE_MDI& window = loaded_window();
  StallMeter meter;
  std::vector<double> opening, threshold;
  for (auto _ : state) {
    IntegrityForm* form = nullptr;
    opening.push_back(
        meter.longest_ms([&] { form = static_cast<IntegrityForm*>(window.show_view(ViewKind::Integrity)); }));
    threshold.push_back(meter.longest_ms([&] { form->time_jump_field()->setValue(form->time_jump_field()->value() + 1); }));
    state.PauseTiming();
    close_view(window, ViewKind::Integrity);
    state.ResumeTiming();
  }
  state.counters["open_stall_ms"] = longest(opening);
  state.counters["threshold_stall_ms"] = longest(threshold);
}
BENCHMARK(BM_StallIntegrity)->Unit(benchmark::kMillisecond)->Iterations(2);

}  // namespace
}  // namespace morvane
