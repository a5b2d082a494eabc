// SPDX-License-Identifier: MIT
// Functional tests on a big file: the selection list's scan of every science packet, and the
// evaluation of one test, whose RF frequency search walks the whole information list.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>

#include "bench_files.h"
#include "core/session.h"
#include "functest/short_message_load.h"
#include "functest/short_test_evaluation.h"
#include "sim/config_writer.h"

namespace morvane {
namespace {

// The big frames file loaded once, with a limit file for its type beside the configuration.
Session& loaded_session() {
  static Session session = [] {
    Session s;
    const std::string base = sim::write_configuration(bench::bench_dir() + "/base");
    const std::filesystem::path ranges = std::filesystem::path(base) / "EGSE_info" / "Test Ranges";
    std::filesystem::create_directories(ranges);
    std::ofstream out(ranges / "CSS Cruise Phase Mode.txt");
    for (int r = 1; r <= 38; ++r) out << "\"Record " << r << "\", -1, 1, -1, 1, -1, 1\r\n";
    out.close();
    s.config = load_configuration(base);
    load_telemetry(s, bench::frames_file(bench::bench_bytes()), FileFormat::CSS);
    s.Test_Mode = "Cruise Phase";
    return s;
  }();
  return session;
}

void BM_FindShortTests(benchmark::State& state) {
  const Session& session = loaded_session();
  for (auto _ : state) benchmark::DoNotOptimize(find_short_tests(session));
  state.SetItemsProcessed(static_cast<int64_t>(session.catalogue.Science_Count()) * state.iterations());
  state.counters["science_entries"] = session.catalogue.Science_Count();
}
BENCHMARK(BM_FindShortTests)->Unit(benchmark::kMillisecond)->Iterations(3);

void BM_OpenShortTest(benchmark::State& state) {
  Session& session = loaded_session();
  session.Current_Science_Index = 1;
  for (auto _ : state) benchmark::DoNotOptimize(open_short_test(session));
  state.SetItemsProcessed(static_cast<int64_t>(session.catalogue.Information_Count()) * state.iterations());
  state.counters["information_entries"] = session.catalogue.Information_Count();
}
BENCHMARK(BM_OpenShortTest)->Unit(benchmark::kMillisecond)->Iterations(5);

}  // namespace
}  // namespace morvane

BENCHMARK_MAIN();
