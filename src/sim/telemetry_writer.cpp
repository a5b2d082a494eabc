// SPDX-License-Identifier: MIT
#include "sim/telemetry_writer.h"

#include <fstream>
#include <string>
#include <vector>

#include "core/error.h"

namespace morvane::sim {

namespace {

constexpr size_t kBlockBytes = 1 << 20;

// Frames (records) to write; for ZEB a size, and for neither the end of the first cycle, is
// checked as the records go.
int64_t frames_wanted(const TelemetryOptions& options) {
  if (options.frames > 0) return options.frames;
  if (options.size == 0 || options.format == FileFormat::ZEB) return INT64_MAX;
  return static_cast<int64_t>(options.size / static_cast<uint64_t>(frame_stride(options.format)));
}

// One cycle ends in standby; the last half minute of it is left to the next file.
constexpr int32_t kOneCycleEnd = kFirstLanderTime + kCycleSeconds - 30;

}  // namespace

TelemetrySummary write_telemetry(const std::string& path, const TelemetryOptions& options) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  if (!out) raise(ErrorNumber::PathNotFound, path);
  TelemetryStream stream(options);
  const int64_t frames = frames_wanted(options);
  std::string block;
  block.reserve(kBlockBytes + 4096);
  uint64_t bytes = 0;
  auto flush = [&] {
    out.write(block.data(), static_cast<std::streamsize>(block.size()));
    bytes += block.size();
    block.clear();
  };
  if (options.format == FileFormat::ZEB) {
    block = stream.zeb_header();
    std::string line;
    for (int64_t r = 0; r < frames; ++r) {
      if (options.frames <= 0 && options.size > 0 && bytes + block.size() >= options.size) break;
      if (options.frames <= 0 && options.size == 0 && stream.next_lander_time() >= kOneCycleEnd) break;
      stream.next_record(line);
      block += line;
      if (block.size() >= kBlockBytes) flush();
    }
  } else {
    std::vector<uint8_t> frame;
    for (int64_t f = 0; f < frames; ++f) {
      if (options.frames <= 0 && options.size == 0 && stream.next_lander_time() >= kOneCycleEnd) break;
      stream.next_frame(frame);
      block.append(reinterpret_cast<const char*>(frame.data()), frame.size());
      if (block.size() >= kBlockBytes) flush();
    }
  }
  flush();
  out.close();
  if (!out) raise(ErrorNumber::DeviceIoError, path);
  TelemetrySummary summary = stream.summary();
  summary.bytes = bytes;
  return summary;
}

}  // namespace morvane::sim
