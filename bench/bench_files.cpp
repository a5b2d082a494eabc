// SPDX-License-Identifier: MIT
#include "bench_files.h"

#include <sys/resource.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "core/session.h"
#include "sim/config_writer.h"
#include "sim/telemetry_writer.h"

namespace morvane::bench {

namespace fs = std::filesystem;

std::string bench_dir() {
  const char* dir = std::getenv("MORVANE_BENCH_DIR");
  const std::string path = dir ? dir : "/tmp/morvane-bench";
  fs::create_directories(path);
  return path;
}

uint64_t bench_bytes() {
  const char* bytes = std::getenv("MORVANE_BENCH_BYTES");
  return bytes ? std::strtoull(bytes, nullptr, 10) : (1ULL << 30);
}

namespace {

// A file of the simulated instrument, written once and kept while it is there: the name says
// what it holds, and it is written under a temporary name first, so a half-written file (an
// interrupted run) is never taken for a finished one.
std::string simulated_file(FileFormat format, uint64_t size, const std::string& extension) {
  const std::string path = bench_dir() + "/sim-seed1-" + std::to_string(size) + extension;
  if (fs::exists(path)) return path;
  sim::TelemetryOptions options;
  options.format = format;
  options.size = size;
  options.spectra_kept = 0;
  sim::write_telemetry(path + ".part", options);
  fs::rename(path + ".part", path);
  return path;
}

}  // namespace

std::string frames_file(uint64_t size) { return simulated_file(FileFormat::CSS, size, ".css"); }

std::string zeb_file(uint64_t size) { return simulated_file(FileFormat::ZEB, size, ".zeb"); }

const Configuration& demo_configuration() {
  static const Configuration config = load_configuration(sim::write_configuration(bench_dir() + "/base"));
  return config;
}

int64_t entries_of(const Session& session) {
  const Catalogue& c = session.catalogue;
  return static_cast<int64_t>(c.HK_Count()) + c.Science_Count() + c.Information_Count();
}

uint64_t peak_rss() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return static_cast<uint64_t>(usage.ru_maxrss) * 1024;
}

}  // namespace morvane::bench
