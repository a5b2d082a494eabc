// SPDX-License-Identifier: MIT
// The campaign archive: ingest of a big file into SQLite (MB of telemetry a second, archive size
// per GiB) and the cross-file queries over an archive of 1,000 cycle-sized files.
#include <benchmark/benchmark.h>

#include <filesystem>

#include "archive/archive.h"
#include "bench_files.h"
#include "core/error.h"
#include "sim/telemetry_writer.h"

namespace morvane {
namespace {

namespace fs = std::filesystem;

constexpr int kCampaignFiles = 1000;

// Bytes of a SQLite archive: the file and its write-ahead log.
double archive_bytes(const std::string& path) {
  double bytes = 0;
  for (const char* suffix : {"", "-wal"}) {
    std::error_code error;
    const auto size = fs::file_size(path + suffix, error);
    if (!error) bytes += static_cast<double>(size);
  }
  return bytes;
}

void remove_archive(const std::string& path) {
  for (const char* suffix : {"", "-wal", "-shm"}) fs::remove(path + suffix);
}

void BM_IngestBigFile(benchmark::State& state) {
  const std::string file = bench::frames_file(bench::bench_bytes());
  const std::string path = bench::bench_dir() + "/archive-ingest.sqlite";
  const auto telemetry = static_cast<double>(fs::file_size(file));
  archive::IngestOptions options;
  options.type = FileFormat::CSS;
  for (auto _ : state) {
    state.PauseTiming();
    remove_archive(path);
    state.ResumeTiming();
    const auto report = archive::open_archive(path)->ingest({file}, bench::demo_configuration(), options);
    if (report.added.size() != 1) state.SkipWithError("the file did not go in");
  }
  state.SetBytesProcessed(static_cast<int64_t>(telemetry) * state.iterations());
  state.counters["archive_MB_per_GiB"] = archive_bytes(path) / telemetry * 1024;
  state.counters["peak_rss_MB"] = static_cast<double>(bench::peak_rss()) / 1e6;
  remove_archive(path);
}
BENCHMARK(BM_IngestBigFile)->Unit(benchmark::kSecond)->Iterations(1)->UseRealTime();

// 1,000 cycles of the simulated instrument (each its own seed, so each its own content),
// archived once and kept in the benchmark folder while it is there.
archive::Archive& campaign_archive() {
  static std::unique_ptr<archive::Archive> archive = [] {
    const std::string path = bench::bench_dir() + "/campaign-1000.sqlite";
    if (!fs::exists(path)) {
      const std::string part = path + ".part";
      remove_archive(part);
      const std::string folder = bench::bench_dir() + "/campaign-cycles";
      fs::create_directories(folder);
      std::vector<std::string> files;
      for (int seed = 1; seed <= kCampaignFiles; ++seed) {
        const std::string file = folder + "/cycle-" + std::to_string(seed) + ".css";
        sim::TelemetryOptions options;
        options.seed = static_cast<uint64_t>(seed);
        sim::write_telemetry(file, options);
        files.push_back(file);
      }
      archive::IngestOptions options;
      options.type = FileFormat::CSS;
      const auto report = archive::open_archive(part)->ingest(files, bench::demo_configuration(), options);
      if (report.added.size() != files.size()) raise(ErrorNumber::DeviceIoError, "campaign files did not all go in");
      fs::rename(part, path);
      fs::remove_all(folder);
    }
    return archive::open_archive(path);
  }();
  return *archive;
}

void BM_TrendOfOneSensorOver1000Files(benchmark::State& state) {
  archive::Archive& archive = campaign_archive();
  archive::TrendQuery query;
  query.sensors = {1};
  size_t points = 0;
  for (auto _ : state) points = archive.trend(query).at(0).points.size();
  state.counters["points"] = static_cast<double>(points);
}
BENCHMARK(BM_TrendOfOneSensorOver1000Files)->Unit(benchmark::kMillisecond)->Iterations(5)->UseRealTime();

void BM_TestsOver1000Files(benchmark::State& state) {
  archive::Archive& archive = campaign_archive();
  size_t tests = 0;
  for (auto _ : state) tests = archive.tests().size();
  state.counters["tests"] = static_cast<double>(tests);
}
BENCHMARK(BM_TestsOver1000Files)->Unit(benchmark::kMillisecond)->Iterations(5)->UseRealTime();

void BM_FailedTestsOver1000Files(benchmark::State& state) {
  archive::Archive& archive = campaign_archive();
  archive::TestQuery query;
  query.failed_only = true;
  size_t tests = 0;
  for (auto _ : state) tests = archive.tests(query).size();
  state.counters["tests"] = static_cast<double>(tests);
}
BENCHMARK(BM_FailedTestsOver1000Files)->Unit(benchmark::kMillisecond)->Iterations(5)->UseRealTime();

}  // namespace
}  // namespace morvane

BENCHMARK_MAIN();
