// SPDX-License-Identifier: MIT
// The housekeeping export of 100 000 packets with every sensor ticked, in each data format, to
// delimited text and to an .xlsx workbook, from a file of the simulated instrument.
#include <benchmark/benchmark.h>

#include <filesystem>

#include "bench_files.h"
#include "core/session.h"
#include "export/export_presenter.h"

namespace morvane {
namespace {

constexpr int32_t kPackets = 100000;

// About 2.2 housekeeping packets a frame: 50 000 frames hold more than enough.
Session& loaded_session() {
  static Session session = [] {
    Session s;
    s.config = bench::demo_configuration();
    load_telemetry(s, bench::frames_file(50000ULL * 282), FileFormat::CSS);
    return s;
  }();
  return session;
}

void export_housekeeping(benchmark::State& state, const std::string& name) {
  Session& session = loaded_session();
  if (session.catalogue.HK_Count() < kPackets) {
    state.SkipWithError("the file holds fewer than 100 000 housekeeping packets");
    return;
  }
  ExportPresenter dialog(ExportKind::Housekeeping, session);
  dialog.format = static_cast<int>(state.range(0));
  dialog.range().Check2_Click(false);
  dialog.range().set_to_text(std::to_string(kPackets));
  const ExportRequest request = *dialog.Command1_Click().request;
  const std::string path = bench::bench_dir() + "/" + name;
  for (auto _ : state) {
    const auto output = open_export_output(path, export_file_type(path), request.delimiter, "Housekeeping");
    const ExportResult result = dialog.write(session, request, *output);
    benchmark::DoNotOptimize(result.rows);
  }
  state.SetItemsProcessed(state.iterations() * kPackets);
  state.counters["MB"] = static_cast<double>(std::filesystem::file_size(path)) / 1e6;
}

void BM_ExportHousekeepingText(benchmark::State& state) { export_housekeeping(state, "export-hk.txt"); }
BENCHMARK(BM_ExportHousekeepingText)->DenseRange(0, 2)->ArgName("format")->Unit(benchmark::kMillisecond);

void BM_ExportHousekeepingWorkbook(benchmark::State& state) { export_housekeeping(state, "export-hk.xlsx"); }
BENCHMARK(BM_ExportHousekeepingWorkbook)->Arg(1)->ArgName("format")->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace morvane

BENCHMARK_MAIN();
