// SPDX-License-Identifier: MIT
// Opening the summary of a file of millions of packets: the time the window needs beyond
// cataloguing the file, and the cost of scrolling its lists. Runs offscreen.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <random>

#include <QApplication>
#include <QListView>
#include <QScrollBar>
#include <QTabWidget>

#include "bench_files.h"
#include "dialogs.h"
#include "main_window.h"
#include "summary_view.h"

namespace morvane {
namespace {

// Cataloguing alone, as the core does it: the floor for opening the file.
void BM_CatalogueOnly(benchmark::State& state) {
  const std::string path = bench::frames_file(bench::bench_bytes());
  Session session;
  session.config = bench::demo_configuration();
  for (auto _ : state) load_telemetry(session, path, FileFormat::CSS);
  state.counters["entries"] = static_cast<double>(bench::entries_of(session));
}
BENCHMARK(BM_CatalogueOnly)->Unit(benchmark::kMillisecond)->Iterations(3);

// The File menu's load: the same catalogue on a worker thread with the progress dialog.
void BM_LoadInTheWindow(benchmark::State& state) {
  const std::string path = bench::frames_file(bench::bench_bytes());
  ConsoleDialogs dialogs;
  EGSE_MDI window(bench::demo_configuration(), dialogs);
  for (auto _ : state) window.load_file(FileFormat::CSS, QString::fromStdString(path));
  state.counters["entries"] = static_cast<double>(bench::entries_of(window.session()));
}
BENCHMARK(BM_LoadInTheWindow)->Unit(benchmark::kMillisecond)->Iterations(3);

void show_and_paint(QWidget& widget) {
  widget.show();
  QApplication::processEvents();
  benchmark::DoNotOptimize(widget.grab());
}

// The main window of the big file, shown and painted.
struct LoadedWindow {
  ConsoleDialogs dialogs;
  EGSE_MDI window{bench::demo_configuration(), dialogs};
  LoadedWindow() {
    window.resize(1200, 800);
    window.load_file(FileFormat::CSS, QString::fromStdString(bench::frames_file(bench::bench_bytes())));
    show_and_paint(window);
  }
};

// Opening the summary on the loaded file, to its first painted lines: what a user waits for
// beyond the load.
void BM_OpenSummary(benchmark::State& state) {
  LoadedWindow loaded;
  EGSE_MDI& window = loaded.window;
  for (auto _ : state) {
    ChildView* summary = window.show_view(ViewKind::Summary);
    show_and_paint(window);
    state.PauseTiming();
    benchmark::DoNotOptimize(summary);
    window.close_view(ViewKind::Summary);
    QApplication::processEvents();
    state.ResumeTiming();
  }
  state.counters["entries"] = static_cast<double>(bench::entries_of(window.session()));
}
BENCHMARK(BM_OpenSummary)->Unit(benchmark::kMillisecond)->Iterations(5);

// Whether a list has laid out all its lines (its scroll bar reaches the last one).
bool laid_out(const QListView* list) {
  const QScrollBar* bar = list->verticalScrollBar();
  return bar->maximum() + bar->pageStep() >= list->model()->rowCount();
}

// Opening the summary until every line of its housekeeping list is laid out, the batches
// running between events.
void BM_OpenSummaryFullyLaidOut(benchmark::State& state) {
  LoadedWindow loaded;
  EGSE_MDI& window = loaded.window;
  for (auto _ : state) {
    auto* summary = static_cast<Summary*>(window.show_view(ViewKind::Summary));
    show_and_paint(window);
    while (!laid_out(summary->list(0))) QApplication::processEvents();
    state.PauseTiming();
    state.counters["hk_rows"] = summary->model(0)->rowCount();
    window.close_view(ViewKind::Summary);
    QApplication::processEvents();
    state.ResumeTiming();
  }
}
BENCHMARK(BM_OpenSummaryFullyLaidOut)->Unit(benchmark::kMillisecond)->Iterations(3);

// One jump to a random place of the information list (the longest) and its repaint.
void BM_ScrollSummary(benchmark::State& state) {
  LoadedWindow loaded;
  EGSE_MDI& window = loaded.window;
  auto* summary = static_cast<Summary*>(window.show_view(ViewKind::Summary));
  summary->tabs()->setCurrentIndex(2);
  show_and_paint(window);
  QListView* list = summary->list(2);
  while (!laid_out(list)) QApplication::processEvents();
  std::mt19937 random(7);
  for (auto _ : state) {
    QScrollBar* bar = list->verticalScrollBar();
    bar->setValue(static_cast<int>(random() % static_cast<unsigned>(bar->maximum() + 1)));
    list->viewport()->repaint();
  }
  state.counters["rows"] = list->model()->rowCount();
}
BENCHMARK(BM_ScrollSummary)->Unit(benchmark::kMicrosecond)->Iterations(200);

}  // namespace
}  // namespace morvane
