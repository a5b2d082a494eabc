// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>

namespace morvane {

struct FreeDeleter {
  void operator()(void* p) const { std::free(p); }
};

// Uninitialised memory for a large store, aligned so that the kernel can back it with huge
// pages: a catalogue of millions of entries then costs a few page faults instead of one per
// 4 KiB. Throws std::bad_alloc when there is no memory.
std::unique_ptr<std::byte[], FreeDeleter> allocate_huge(size_t bytes);

}  // namespace morvane
