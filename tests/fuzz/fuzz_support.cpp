// SPDX-License-Identifier: MIT
#include "fuzz_support.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "sim/config_writer.h"

namespace morvane::fuzz {

static std::string scratch_dir() {
  static const std::string dir = [] {
    const std::string base = std::filesystem::exists("/dev/shm") ? "/dev/shm" : "/tmp";
    std::string path = base + "/morvane-fuzz-" + std::to_string(::getpid());
    std::filesystem::create_directories(path);
    return path;
  }();
  return dir;
}

std::string write_input(const uint8_t* data, size_t size, const char* name) {
  const std::string path = scratch_dir() + "/" + name;
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
  return path;
}

Session& configured_session() {
  static Session session = [] {
    Session s;
    s.config = load_configuration(sim::write_configuration(scratch_dir() + "/base"));
    return s;
  }();
  return session;
}

}  // namespace morvane::fuzz
