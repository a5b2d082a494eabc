// SPDX-License-Identifier: MIT
#pragma once

#include <charconv>
#include <cstdint>
#include <string_view>

#include "export/line_sink.h"

namespace morvane {

// An integer cell, its text made without allocating.
inline void integer_cell(LineSink& out, int64_t value) {
  char text[24];
  const auto end = std::to_chars(text, text + sizeof text, value).ptr;
  out.number(static_cast<double>(value), std::string_view(text, static_cast<size_t>(end - text)));
}

}  // namespace morvane
