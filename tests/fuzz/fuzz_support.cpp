// SPDX-License-Identifier: MIT
#include "fuzz_support.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "functest/short_message_load.h"
#include "functest/short_test_data.h"
#include "functest/short_test_ranges.h"
#include "sim/config_writer.h"

namespace morvane::fuzz {

// The simulator's base folder, written once per process below a scratch folder removed at exit.
const std::string& base_folder() {
  static const std::string scratch = [] {
    const std::string parent = std::filesystem::exists("/dev/shm") ? "/dev/shm" : "/tmp";
    std::string path = parent + "/morvane-fuzz-" + std::to_string(::getpid());
    std::filesystem::create_directories(path);
    return path;
  }();
  static const std::string base = [] {
    std::atexit([] {
      std::error_code ignored;
      std::filesystem::remove_all(scratch, ignored);
    });
    return sim::write_configuration(scratch + "/base");
  }();
  return base;
}

void load_input(Session& session, const uint8_t* data, size_t size, FileFormat format) {
  auto file = std::make_shared<TelemetryFile>("fuzz input", std::vector<uint8_t>(data, data + size), format);
  expect_only_runtime_errors([&] { load_telemetry(session, std::move(file)); });
}

Session& configured_session() {
  static Session session = [] {
    Session s;
    s.config = load_configuration(base_folder());
    return s;
  }();
  return session;
}

ShortTestEvaluation evaluate_current_test(const Session& session) {
  static std::map<std::pair<FileFormat, TestMode>, TestRanges> ranges;
  const TestMode mode = parse_test_mode(session.Test_Mode);
  const auto key = std::make_pair(session.File_Type, mode);
  if (!ranges.contains(key)) {
    ranges.emplace(key, read_test_ranges(test_ranges_path(session.config.Egse_Path, session.File_Type, mode)));
  }
  const TestPackets packets = collect_test_packets(session.catalogue, session.Current_Science_Index);
  const TestReadings readings = Load_Test_Data(session, packets);
  return evaluate_short_test(session.config, mode, packets, readings, ranges.at(key));
}

std::string memory_file(const uint8_t* data, size_t size) {
  static const int fd = ::memfd_create("fuzz-input", MFD_CLOEXEC);
  if (fd < 0 || ::ftruncate(fd, 0) != 0) std::abort();
  size_t done = 0;
  while (done < size) {
    const ssize_t wrote = ::pwrite(fd, data + done, size - done, static_cast<off_t>(done));
    if (wrote <= 0) std::abort();
    done += static_cast<size_t>(wrote);
  }
  return "/proc/self/fd/" + std::to_string(fd);
}

}  // namespace morvane::fuzz
