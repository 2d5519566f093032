#include "consolidated/ByteBlock.h"

#include <sys/mman.h>

#include <algorithm>
#include <new>

namespace consolidator {

namespace {

char* map(std::size_t size) {
  void* const memory =
      mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED) throw std::bad_alloc();
  madvise(memory, size, MADV_HUGEPAGE);  // only a hint, so a refusal does not matter
  return static_cast<char*>(memory);
}

// An empty mapping is an error.
std::size_t mappedSize(std::size_t size) { return std::max<std::size_t>(size, 1); }

}  // namespace

ByteBlock::ByteBlock(std::size_t size)
    : size_(size), bytes_(map(mappedSize(size)), Unmap{mappedSize(size)}) {}

void ByteBlock::Unmap::operator()(char* bytes) const { munmap(bytes, size); }

}  // namespace consolidator
