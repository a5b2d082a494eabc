// SPDX-License-Identifier: MIT
// Find and filter over the summary's housekeeping list of a file of a million housekeeping
// packets: the pass itself, the whole search in the window a slice at a time (and the longest
// the window waits for one slice), showing the matches alone, stepping through them with Enter,
// and clearing. Runs offscreen.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdlib>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QListView>
#include <QScrollBar>

#include "bench_files.h"
#include "dialogs.h"
#include "main_window.h"
#include "summary_find_bar.h"
#include "summary_view.h"
#include "decoders/summary_filter.h"

namespace morvane {
namespace {

constexpr int32_t kPackets = 1000000;
// The simulated instrument sends about 2.2 housekeeping packets a frame.
constexpr uint64_t kFrames = 480000;

using Field = SummaryFindBar::Field;

struct Workstation {
  ConsoleDialogs dialogs;
  EGSE_MDI window{bench::demo_configuration(), dialogs};
  Summary* summary = nullptr;
  SummaryFindBar* bar = nullptr;

  Workstation() {
    window.resize(1200, 800);
    window.load_file(FileFormat::CSS, QString::fromStdString(bench::frames_file(kFrames * 282)));
    window.show();
    summary = static_cast<Summary*>(window.show_view(ViewKind::Summary));
    bar = summary->find_bar(0);
    QApplication::processEvents();
  }
  int32_t packets() const { return window.session().catalogue.HK_Count(); }
  // Complete packets of the middle half of the file's lander time; the last field is typed in
  // last, as a user's last key, and timed as one turn of the event loop.
  double set_conditions() {
    const EntryList& hk = window.session().catalogue.HK_List;
    const int32_t first = hk[1].Lander_Time;
    const int32_t last = hk[hk.size()].Lander_Time;
    bar->refresh_labels();
    bar->label_choice()->setCurrentIndex(bar->label_choice()->findText("Complete"));
    bar->field(Field::TimeFrom)->setText(QString::number(first + (last - first) / 4));
    QElapsedTimer turn;
    turn.start();
    bar->field(Field::TimeTo)->setText(QString::number(last - (last - first) / 4));
    return turn.nsecsElapsed() / 1e6;
  }
  // Serves events until the search is over; returns the longest the window waited for one turn.
  double run_search() {
    double longest = 0;
    QElapsedTimer turn;
    while (bar->searching()) {
      turn.start();
      QApplication::processEvents();
      longest = std::max(longest, turn.nsecsElapsed() / 1e6);
    }
    return longest;
  }
};

// Made once for every benchmark and never destroyed: its windows must not outlive the
// application object, which main() ends first.
Workstation& workstation() {
  static Workstation* w = new Workstation;
  return *w;
}

bool enough(benchmark::State& state, const Workstation& w) {
  if (w.packets() >= kPackets) return true;
  state.SkipWithError("the file holds fewer than a million housekeeping packets");
  return false;
}

// The decoder's pass over the whole list, as one call.
void BM_FilterPass(benchmark::State& state) {
  Workstation& w = workstation();
  if (!enough(state, w)) return;
  w.set_conditions();
  const SummaryFilter filter = w.bar->filter();
  size_t matches = 0;
  for (auto _ : state) matches = filter_entries(w.window.session().catalogue.HK_List, filter).size();
  state.counters["entries"] = w.packets();
  state.counters["matches"] = static_cast<double>(matches);
  state.SetItemsProcessed(state.iterations() * w.packets());
}
BENCHMARK(BM_FilterPass)->Unit(benchmark::kMillisecond);

// New conditions in the find bar until every entry is tested, events served between slices.
void BM_FindInTheWindow(benchmark::State& state) {
  Workstation& w = workstation();
  if (!enough(state, w)) return;
  w.bar->only_matches()->setChecked(state.range(0) != 0);
  double longest = 0;
  for (auto _ : state) {
    longest = std::max(longest, w.set_conditions());
    longest = std::max(longest, w.run_search());
    state.PauseTiming();
    w.bar->clear();
    QApplication::processEvents();
    state.ResumeTiming();
  }
  w.set_conditions();
  w.run_search();
  state.counters["matches"] = static_cast<double>(w.summary->model(0)->matches().size());
  state.counters["rows"] = w.summary->model(0)->rowCount();
  state.counters["longest_turn_ms"] = longest;
  w.bar->clear();
  w.bar->only_matches()->setChecked(false);
}
BENCHMARK(BM_FindInTheWindow)->Arg(0)->Arg(1)->ArgName("only_matches")->Unit(benchmark::kMillisecond)->Iterations(5);

// Enter on the matches of a finished search: the next match is selected and scrolled to.
void BM_FindNext(benchmark::State& state) {
  Workstation& w = workstation();
  if (!enough(state, w)) return;
  w.set_conditions();
  w.run_search();
  for (auto _ : state) {
    w.bar->find_next();
    w.summary->list(0)->viewport()->repaint();
  }
  w.bar->clear();
}
BENCHMARK(BM_FindNext)->Unit(benchmark::kMicrosecond)->Iterations(1000);

// Clear on a filtered list: the million lines back, painted.
void BM_ClearTheFilter(benchmark::State& state) {
  Workstation& w = workstation();
  if (!enough(state, w)) return;
  w.bar->only_matches()->setChecked(true);
  for (auto _ : state) {
    state.PauseTiming();
    w.set_conditions();
    w.run_search();
    state.ResumeTiming();
    w.bar->clear();
    w.summary->list(0)->viewport()->repaint();
  }
  state.counters["rows"] = w.summary->model(0)->rowCount();
  w.bar->only_matches()->setChecked(false);
}
BENCHMARK(BM_ClearTheFilter)->Unit(benchmark::kMillisecond)->Iterations(5);

}  // namespace
}  // namespace morvane
