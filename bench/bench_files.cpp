// SPDX-License-Identifier: MIT
#include "bench_files.h"

#include <sys/resource.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

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

void put_word(std::vector<uint8_t>& b, size_t offset, int word) {
  b[offset] = static_cast<uint8_t>(word & 0xFF);
  b[offset + 1] = static_cast<uint8_t>((word >> 8) & 0xFF);
}

void packet(std::vector<uint8_t>& frame, size_t& offset, int identifier, int sequence, int length_field, int time,
            int selector_offset, int selector) {
  put_word(frame, offset, identifier);
  put_word(frame, offset + 2, sequence);
  put_word(frame, offset + 4, length_field);
  put_word(frame, offset + 8, time);
  put_word(frame, offset + static_cast<size_t>(selector_offset), selector);
  for (size_t k = 22; k < static_cast<size_t>(length_field + 7) && k < 58; ++k) frame[offset + k] = static_cast<uint8_t>(k * 7);
  offset += static_cast<size_t>(length_field + 7);
}

}  // namespace

std::string frames_file(uint64_t size) {
  const std::string path = bench_dir() + "/frames-" + std::to_string(size) + ".css";
  if (fs::exists(path) && fs::file_size(path) == size) return path;
  const uint64_t frames = size / 282;
  std::ofstream out(path, std::ios::binary);
  std::vector<uint8_t> block;
  for (uint64_t f = 0; f < frames;) {
    block.clear();
    for (int i = 0; i < 4096 && f < frames; ++i, ++f) {
      std::vector<uint8_t> frame(282, 0);
      size_t o = 22;
      const int seq = static_cast<int>(f % 16384);
      const int time = static_cast<int>(f % 65536);
      packet(frame, o, 0x0F34, seq, 89, time, 16, 2);
      packet(frame, o, 0x0F3C, seq, 43, time, 16, 1);
      packet(frame, o, 0x0F37, seq, 21, time, 14, 0x0100);
      packet(frame, o, 0x0F31, seq, 21, time, 14, 0x0100);
      block.insert(block.end(), frame.begin(), frame.end());
    }
    out.write(reinterpret_cast<const char*>(block.data()), static_cast<std::streamsize>(block.size()));
  }
  out.close();
  fs::resize_file(path, size);
  return path;
}

std::string zeb_file(uint64_t size) {
  const std::string path = bench_dir() + "/records-" + std::to_string(size) + ".zeb";
  if (fs::exists(path) && fs::file_size(path) >= size) return path;
  std::ofstream out(path, std::ios::binary);
  std::string record;
  uint64_t written = 0;
  for (int r = 0; written < size; ++r) {
    record.clear();
    for (int item = 1; item <= 136; ++item) {
      int value = item * 37 % 4096;
      if (item == 5) value = r % 3 == 0 ? 1844 : r % 3 == 1 ? 1852 : 1847;
      if (item == 17) value = 1 + r % 2;
      if (item == 15) value = 1;
      record += std::to_string(value);
      record += item % 8 == 0 || item == 136 ? "\r\n" : ", ";
    }
    out << record;
    written += record.size();
  }
  return path;
}

uint64_t peak_rss() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return static_cast<uint64_t>(usage.ru_maxrss) * 1024;
}

}  // namespace morvane::bench
