// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "core/error.h"
#include "core/session.h"
#include "functest/short_test_evaluation.h"

namespace morvane::fuzz {

// Loads the fuzzer's bytes into the session as a telemetry file of the format, from memory: no
// file is written. A run-time error while cataloguing is swallowed; the entries before it stay.
void load_input(Session& session, const uint8_t* data, size_t size, FileFormat format);

// The simulator's base folder (configuration and limit files), written once per process.
const std::string& base_folder();

// A session with the simulator's configuration, made once per process.
Session& configured_session();

// The evaluation of the test at the session's Current_Science_Index in its Test_Mode, as the
// test view opens it, with the limit file read once per process rather than per input.
ShortTestEvaluation evaluate_current_test(const Session& session);

// Text of the fuzzer's input as a file the readers of configuration text open by name: an
// anonymous in-memory file (memfd) rewritten per input, so no file system is touched.
std::string memory_file(const uint8_t* data, size_t size);

// A little reader of the fuzzer's bytes for targets that take choices before the data.
class Choices {
 public:
  Choices(const uint8_t* data, size_t size) : data_(data), size_(size) {}
  uint8_t byte() { return size_ > 0 ? (--size_, *data_++) : 0; }
  int32_t number() { return static_cast<int32_t>(byte()) << 8 | byte(); }
  const uint8_t* rest() const { return data_; }
  size_t rest_size() const { return size_; }

 private:
  const uint8_t* data_;
  size_t size_;
};

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
