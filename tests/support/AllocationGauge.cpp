// A program that links this file has its requests for memory noted on their way to the C library.
// The address sanitizer has an allocator of its own, which reports them to a hook.

#include "AllocationGauge.h"

#include <cstdlib>

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define CONSOLIDATOR_SANITIZED_MEMORY
#endif
#elif defined(__SANITIZE_ADDRESS__)
#define CONSOLIDATOR_SANITIZED_MEMORY
#endif

namespace consolidator {

namespace {

// The allocation functions have no other way to learn who watches.
const AllocationGauge* watching = nullptr;

void note(std::size_t size) {
  if (watching != nullptr) watching->note(size);
}

}  // namespace

AllocationGauge::AllocationGauge() { watching = this; }

AllocationGauge::~AllocationGauge() { watching = nullptr; }

}  // namespace consolidator

extern "C" {

#ifdef CONSOLIDATOR_SANITIZED_MEMORY

void __sanitizer_malloc_hook(const volatile void* memory, std::size_t size);

void __sanitizer_malloc_hook(const volatile void* /*memory*/, std::size_t size) {
  consolidator::note(size);
}

#else

void* __libc_malloc(std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);

void* malloc(std::size_t size) noexcept {
  consolidator::note(size);
  return __libc_malloc(size);
}

void* realloc(void* memory, std::size_t size) noexcept {
  consolidator::note(size);
  return __libc_realloc(memory, size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
  consolidator::note(size);
  return __libc_memalign(alignment, size);
}

#endif
}
