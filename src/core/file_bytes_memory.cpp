// SPDX-License-Identifier: MIT
// FileBytes over bytes already in memory: what the tests and fuzz targets load without writing
// a file first.
#include <algorithm>
#include <cstring>

#include "core/file_bytes.h"

namespace morvane {

FileBytes::FileBytes(std::string name, std::vector<uint8_t> bytes)
    : path_(std::move(name)), size_(bytes.size()), memory_(std::move(bytes)) {}

void FileBytes::read_memory(uint64_t offset, uint8_t* out, size_t count) const {
  const size_t held = offset < size_ ? static_cast<size_t>(std::min<uint64_t>(count, size_ - offset)) : 0;
  if (held > 0) std::memcpy(out, memory_.data() + offset, held);
  if (held < count) std::memset(out + held, 0, count - held);
}

}  // namespace morvane
