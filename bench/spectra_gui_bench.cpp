// SPDX-License-Identifier: MIT
// The spectrum graph on screen: a repaint of 1025 bins at full zoom-out, and a zoom button's
// whole round (new geometry and repaint), the work behind every button press. Runs offscreen.
#include <benchmark/benchmark.h>

#include <cstdlib>

#include <QApplication>

#include "spectrum_plot.h"
#include "decoders/spectrum_graph.h"

namespace morvane {
namespace {

Spectrum_Bins jagged_bins() {
  Spectrum_Bins bins{};
  for (size_t b = 0; b < bins.size(); ++b) bins[b] = static_cast<double>((b * 37) % 4096);
  return bins;
}

void BM_RepaintAllBins(benchmark::State& state) {
  SpectrumPlot plot;
  plot.resize(static_cast<int>(state.range(0)), 400);
  SpectrumAxis axis;
  axis.Y_Max = 4;  // the axis tops at 4000 counts: the outline runs its whole height
  plot.set_graph(spectrum_graph(jagged_bins(), 1025, axis));
  plot.show();
  QApplication::processEvents();
  for (auto _ : state) plot.repaint();
  state.counters["points"] = static_cast<double>(plot.graph().outline.size());
}
BENCHMARK(BM_RepaintAllBins)->Arg(700)->Arg(1900)->Unit(benchmark::kMicrosecond);

void BM_ZoomRound(benchmark::State& state) {
  const Spectrum_Bins bins = jagged_bins();
  SpectrumPlot plot;
  plot.resize(700, 400);
  plot.show();
  QApplication::processEvents();
  SpectrumAxis axis;
  axis.Y_Max = 4;
  for (auto _ : state) {
    // Zoom in step by step to 32, then start again from the whole range.
    if (!axis.press(SpectrumButton::ZoomIn)) axis = SpectrumAxis{0, kLastBin, 1, 4};
    plot.set_graph(spectrum_graph(bins, 1025, axis));
    plot.repaint();
  }
}
BENCHMARK(BM_ZoomRound)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace morvane
