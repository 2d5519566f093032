#include "driver/ProcessHeap.h"

#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace consolidator {

// The heap grows by a large reserve at once, which takes no memory before it is used. Its start
// stays on usual pages, so that small runs do not pay for clearing a huge one.
void prepareProcessHeap() {
  constexpr int reserve = 1 << 30;
  constexpr std::size_t usualPart = std::size_t{4} << 20U;
  constexpr std::uintptr_t hugePage = std::uintptr_t{2} << 20U;
  constexpr int usualMmapMax = 65536;
  constexpr int usualTopPad = 128 * 1024;
  mallopt(M_TRIM_THRESHOLD, -1);
  mallopt(M_MMAP_MAX, 0);
  mallopt(M_TOP_PAD, reserve);
  // NOLINTBEGIN(*-no-malloc, performance-no-int-to-ptr): the heap itself is what this is about.
  if (void* const piece = std::malloc(usualPart)) {
    const auto start = (reinterpret_cast<std::uintptr_t>(piece) + usualPart) & ~(hugePage - 1);
    const auto end = reinterpret_cast<std::uintptr_t>(sbrk(0)) & ~(hugePage - 1);
    // Another allocator, as a sanitizer brings it, has its memory elsewhere.
    if (start < end && end - start < 2 * std::uintptr_t{reserve}) {
      madvise(reinterpret_cast<void*>(start), end - start, MADV_HUGEPAGE);
    }
    std::free(piece);
  }
  // NOLINTEND(*-no-malloc, performance-no-int-to-ptr)
  mallopt(M_MMAP_MAX, usualMmapMax);
  mallopt(M_TOP_PAD, usualTopPad);
}

}  // namespace consolidator
