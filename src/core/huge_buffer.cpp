// SPDX-License-Identifier: MIT
#include "core/huge_buffer.h"

#include <sys/mman.h>

#include <new>

namespace morvane {

std::unique_ptr<std::byte[], FreeDeleter> allocate_huge(size_t bytes) {
  constexpr size_t kHugePage = 2 * 1024 * 1024;
  const bool huge = bytes >= kHugePage;
  const size_t alignment = huge ? kHugePage : alignof(std::max_align_t);
  const size_t size = (bytes + alignment - 1) / alignment * alignment;
  void* memory = std::aligned_alloc(alignment, size);
  if (memory == nullptr) throw std::bad_alloc();
#ifdef MADV_HUGEPAGE
  if (huge) ::madvise(memory, size, MADV_HUGEPAGE);
#endif
  return std::unique_ptr<std::byte[], FreeDeleter>(static_cast<std::byte*>(memory));
}

}  // namespace morvane
