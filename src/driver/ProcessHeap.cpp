#include "driver/ProcessHeap.h"

#include <malloc.h>
#include <sys/mman.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace consolidator {

// One large piece of the heap is taken and given back at once without being touched; all that comes
// later is cut from it. Its start stays on usual pages, so that small runs do not pay for clearing
// a huge one.
void prepareProcessHeap() {
  constexpr std::size_t reserve = std::size_t{1} << 30U;
  constexpr std::size_t usualPart = std::size_t{4} << 20U;
  constexpr std::size_t hugePage = std::size_t{2} << 20U;
  constexpr int usualMmapMax = 65536;
  mallopt(M_TRIM_THRESHOLD, -1);
  mallopt(M_MMAP_MAX, 0);
  if (void* const piece = std::malloc(reserve)) {
    const auto start = (reinterpret_cast<std::uintptr_t>(piece) + usualPart) & ~(hugePage - 1);
    madvise(reinterpret_cast<void*>(start), reserve - usualPart - hugePage, MADV_HUGEPAGE);
    std::free(piece);
  }
  mallopt(M_MMAP_MAX, usualMmapMax);
}

}  // namespace consolidator
