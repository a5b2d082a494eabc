// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

#include "core/configuration.h"

namespace morvane {
struct Session;
}

namespace morvane::bench {

// The folder big benchmark files are kept in (MORVANE_BENCH_DIR, else /tmp/morvane-bench).
std::string bench_dir();
// Bytes of the big files (MORVANE_BENCH_BYTES, else 1 GiB).
uint64_t bench_bytes();
// A CSS file of the simulated instrument: the whole 282-byte frames that fit in size bytes
// (housekeeping, events, auxiliary data and spectra as a day of the instrument sends them).
// Written once (about half a minute for a gibibyte) and reused while it is there.
std::string frames_file(uint64_t size);
// A ZEB text file of the simulated instrument of at least size bytes.
std::string zeb_file(uint64_t size);
// The demo set's configuration (morvane-sim config), written once in bench_dir(): every load is
// measured with it, as users load, unless a benchmark says why not.
const Configuration& demo_configuration();
// Entries in the three lists of a loaded file.
int64_t entries_of(const Session& session);
// The peak resident memory of this process, bytes.
uint64_t peak_rss();

}  // namespace morvane::bench
