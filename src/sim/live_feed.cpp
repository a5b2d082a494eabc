// SPDX-License-Identifier: MIT
#include "sim/live_feed.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <thread>
#include <vector>

#include "core/error.h"
#include "random.h"
#include "sim/telemetry_writer.h"

namespace morvane::sim {

namespace {

using Clock = std::chrono::steady_clock;

class Output {
 public:
  explicit Output(const std::string& path) : path_(path) {
    fd_ = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_APPEND, 0644);
    if (fd_ < 0) raise(ErrorNumber::PathNotFound, path);
  }
  ~Output() { ::close(fd_); }
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;

  void write(const uint8_t* data, size_t count) {
    while (count > 0) {
      const ssize_t n = ::write(fd_, data, count);
      if (n < 0 && errno == EINTR) continue;  // a stop signal arrived mid-write
      if (n <= 0) raise(ErrorNumber::DeviceIoError, path_);
      data += n;
      count -= static_cast<size_t>(n);
    }
  }

 private:
  std::string path_;
  int fd_ = -1;
};

// Sleeps until the deadline, waking every tenth of a second to see whether to stop.
void sleep_until(Clock::time_point deadline, const std::atomic<bool>& stop) {
  while (!stop.load() && Clock::now() < deadline) {
    std::this_thread::sleep_until(std::min(deadline, Clock::now() + std::chrono::milliseconds(100)));
  }
}

}  // namespace

int64_t run_live_feed(const std::string& path, const LiveOptions& options, const std::atomic<bool>& stop) {
  Output out(path);
  TelemetryOptions telemetry;
  telemetry.format = FileFormat::CSS;
  telemetry.seed = options.seed;
  TelemetryStream stream(telemetry);
  Random timing(stream_seed(options.seed, 3));
  const auto interval = std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(1.0 / options.rate));
  const auto start = Clock::now();
  std::vector<uint8_t> frame;
  int64_t written = 0;
  while (!stop.load() && (options.frames <= 0 || written < options.frames)) {
    stream.next_frame(frame);
    if (timing.chance(options.half_written_chance)) {
      const size_t part = 1 + static_cast<size_t>(timing.below(static_cast<int>(frame.size()) - 1));
      out.write(frame.data(), part);
      // Long enough for a reader polling twice a second to see the partial frame now and then.
      std::this_thread::sleep_for(std::min(interval / 2, Clock::duration(std::chrono::milliseconds(400))));
      out.write(frame.data() + part, frame.size() - part);
    } else {
      out.write(frame.data(), frame.size());
    }
    ++written;
    sleep_until(start + interval * written, stop);
  }
  return written;
}

}  // namespace morvane::sim
