// SPDX-License-Identifier: MIT
// Loading and cataloguing big telemetry files: bytes per second, entries per second and the
// memory each catalogued entry costs.
#include <benchmark/benchmark.h>

#include "bench_files.h"
#include "core/session.h"

namespace morvane {
namespace {

// The peak memory is the process's: a load after a bigger one (the bare load) shows none of it.
void report(benchmark::State& state, uint64_t bytes, int64_t entries, uint64_t rss_before, const Session& session,
            bool memory = true) {
  state.SetBytesProcessed(static_cast<int64_t>(bytes) * state.iterations());
  state.SetItemsProcessed(entries * state.iterations());
  state.counters["entries"] = static_cast<double>(entries);
  if (!memory) return;
  const double hk_table = static_cast<double>(session.HK_Sensor_Data.entries()) * session.HK_Sensor_Data.sensors();
  state.counters["peak_bytes_per_entry"] =
      (static_cast<double>(bench::peak_rss() - rss_before) - hk_table) / static_cast<double>(entries);
}

void BM_LoadFramesFile(benchmark::State& state) {
  const std::string path = bench::frames_file(bench::bench_bytes());
  const uint64_t rss_before = bench::peak_rss();
  int64_t entries = 0;
  Session session;
  session.config = bench::demo_configuration();
  for (auto _ : state) {
    load_telemetry(session, path, FileFormat::CSS);
    entries = bench::entries_of(session);
  }
  report(state, session.telemetry().bytes().size(), entries, rss_before, session);
}
BENCHMARK(BM_LoadFramesFile)->Unit(benchmark::kMillisecond)->Iterations(3);

// The same file without a sensor table, so without the sensor bytes: the baseline the load above
// is held to (within 1.25 times), not a load users do.
void BM_LoadFramesFileBare(benchmark::State& state) {
  const std::string path = bench::frames_file(bench::bench_bytes());
  const uint64_t rss_before = 0;
  int64_t entries = 0;
  Session session;
  for (auto _ : state) {
    load_telemetry(session, path, FileFormat::CSS);
    entries = bench::entries_of(session);
  }
  report(state, session.telemetry().bytes().size(), entries, rss_before, session, false);
}
BENCHMARK(BM_LoadFramesFileBare)->Unit(benchmark::kMillisecond)->Iterations(3);

void BM_LoadZebFile(benchmark::State& state) {
  const std::string path = bench::zeb_file(bench::bench_bytes() / 8);
  const uint64_t rss_before = bench::peak_rss();
  int64_t entries = 0;
  Session session;
  session.config = bench::demo_configuration();
  for (auto _ : state) {
    load_telemetry(session, path, FileFormat::ZEB);
    entries = bench::entries_of(session);
  }
  report(state, session.telemetry().bytes().size(), entries, rss_before, session);
}
BENCHMARK(BM_LoadZebFile)->Unit(benchmark::kMillisecond)->Iterations(2);

}  // namespace
}  // namespace morvane

BENCHMARK_MAIN();
