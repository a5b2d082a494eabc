// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "core/error.h"
#include "core/session.h"

namespace morvane::fuzz {

// A scratch file in memory-backed storage holding the fuzzer's input, rewritten per input.
std::string write_input(const uint8_t* data, size_t size, const char* name);

// A session with the simulator's configuration, made once per process.
Session& configured_session();

// Runs f, swallowing the program's own run-time errors: those are the expected answer to a bad
// file. Anything else (a crash, a sanitizer report, another exception) is a finding.
template <typename F>
void expect_only_runtime_errors(F&& f) {
  try {
    f();
  } catch (const RuntimeError&) {
  }
}

}  // namespace morvane::fuzz
