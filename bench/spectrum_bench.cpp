// SPDX-License-Identifier: MIT
// The spectrum window's work: grouping a file's spectra when it opens, assembling a spectrum of
// 1025 bins when it moves, and the graph geometry of 1025 bins at full zoom-out on every redraw.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <vector>

#include "bench_files.h"
#include "core/packet_kinds.h"
#include "core/session.h"
#include "decoders/spectrum_presenter.h"

namespace morvane {
namespace {

constexpr int kSubPackets = 10;
constexpr int kBinsPerSubPacket = 103;  // ten sub-packets cover bins 0..1029; the view assembles nine

void put_word(std::vector<uint8_t>& b, size_t offset, int word) {
  b[offset] = static_cast<uint8_t>(word & 0xFF);
  b[offset + 1] = static_cast<uint8_t>((word >> 8) & 0xFF);
}

// A CSS file of spectra, one sub-packet a frame: ten isotope sub-packets, then a GC packet.
std::string spectra_file(int spectra) {
  const std::string path = bench::bench_dir() + "/spectra-" + std::to_string(spectra) + ".css";
  const uint64_t frames = static_cast<uint64_t>(spectra) * (kSubPackets + 1);
  if (std::filesystem::exists(path) && std::filesystem::file_size(path) == frames * 282) return path;
  std::ofstream out(path, std::ios::binary);
  std::vector<uint8_t> frame(282);
  for (int s = 0; s < spectra; ++s) {
    for (int k = 0; k <= kSubPackets; ++k) {
      std::fill(frame.begin(), frame.end(), 0);
      const bool gc = k == kSubPackets;
      const int bins = gc ? 1 : std::min(kBinsPerSubPacket, 1025 - k * kBinsPerSubPacket);
      put_word(frame, 22, identifier_of(PacketKind::Science, FormatFamily::Frames282));
      put_word(frame, 24, k == 0 ? 0x8000 : 0);
      put_word(frame, 26, 32 + 2 * bins - 7);
      put_word(frame, 22 + selector_offset(Selector::SubType),
               label_rule(gc ? LabelCode::GcSpectrum : LabelCode::IsotopeSpectrum).selector_value);
      put_word(frame, 22 + 28, gc ? 0 : k * kBinsPerSubPacket);
      put_word(frame, 22 + 30, bins);
      for (int j = 0; j < bins; ++j)
        put_word(frame, 22 + 32 + 2 * static_cast<size_t>(j), ((j * 37) % 4096) << 4 | (j % 4));
      out.write(reinterpret_cast<const char*>(frame.data()), 282);
    }
  }
  return path;
}

void BM_OpenSpectrumWindow(benchmark::State& state) {
  Session session;
  session.config = bench::demo_configuration();
  load_telemetry(session, spectra_file(static_cast<int>(state.range(0))), FileFormat::CSS);
  SpectrumPresenter view;
  for (auto _ : state) {
    view.open(session);
    benchmark::DoNotOptimize(view.bins().data());
  }
  state.SetItemsProcessed(state.iterations() * session.catalogue.Science_Count());
  state.counters["spectra"] = static_cast<double>(view.scroll_maximum());
}
BENCHMARK(BM_OpenSpectrumWindow)->Arg(10000)->Unit(benchmark::kMillisecond);

void BM_MoveToSpectrum(benchmark::State& state) {
  Session session;
  session.config = bench::demo_configuration();
  load_telemetry(session, spectra_file(1000), FileFormat::CSS);
  SpectrumPresenter view;
  view.open(session);
  int32_t s = 1;
  for (auto _ : state) {
    view.show_spectrum(session, s);
    s = s % 1000 + 1;
    benchmark::DoNotOptimize(view.bins().data());
  }
  state.counters["bins"] = view.bin_count();
}
BENCHMARK(BM_MoveToSpectrum)->Unit(benchmark::kMicrosecond);

void BM_GraphOfAllBins(benchmark::State& state) {
  Spectrum_Bins bins{};
  for (size_t b = 0; b < bins.size(); ++b) bins[b] = static_cast<double>((b * 37) % 4096);
  const SpectrumAxis axis;  // the whole range: every bin is drawn
  size_t points = 0;
  for (auto _ : state) {
    const SpectrumGraph graph = spectrum_graph(bins, 1025, axis);
    points = graph.outline.size();
    benchmark::DoNotOptimize(graph.outline.data());
  }
  state.counters["points"] = static_cast<double>(points);
}
BENCHMARK(BM_GraphOfAllBins)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace morvane

BENCHMARK_MAIN();
