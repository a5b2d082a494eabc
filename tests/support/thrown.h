// SPDX-License-Identifier: MIT
// The run-time error a call ends with, for one-line checks of error numbers and messages.
#pragma once

#include <string>

#include "core/error.h"

namespace morvane::testing {

// The number and message of the RuntimeError a call threw; number 0 when it threw none.
struct Thrown {
  int number = 0;
  std::string message;
};

template <class Call>
Thrown thrown(Call&& call) {
  try {
    call();
  } catch (const RuntimeError& error) {
    return {error.number(), error.message()};
  }
  return {};
}

inline bool contains(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

}  // namespace morvane::testing
