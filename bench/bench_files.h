// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

namespace morvane::bench {

// The folder big benchmark files are kept in (MORVANE_BENCH_DIR, else /tmp/morvane-bench).
std::string bench_dir();
// Bytes of the big files (MORVANE_BENCH_BYTES, else 1 GiB).
uint64_t bench_bytes();
// A binary file of about size bytes of 282-byte frames, each holding a complete housekeeping
// packet, an auxiliary packet and two events (five entries with the empty slot). Reused when
// it already exists with that size.
std::string frames_file(uint64_t size);
// A ZEB text file of about size bytes.
std::string zeb_file(uint64_t size);
// The peak resident memory of this process, bytes.
uint64_t peak_rss();

}  // namespace morvane::bench
