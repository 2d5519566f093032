#include "model/AllocationGauge.h"

#include <algorithm>
#include <cstdlib>
#include <new>

namespace consolidator {

namespace {

// The operators below have no other way to learn who watches.
AllocationGauge* watching = nullptr;

void* allocate(std::size_t size) {
  if (watching != nullptr) watching->note(size);
  return std::malloc(std::max<std::size_t>(size, 1));
}

void* allocateOrThrow(std::size_t size) {
  void* memory = allocate(size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

}  // namespace

AllocationGauge::AllocationGauge() { watching = this; }

AllocationGauge::~AllocationGauge() { watching = nullptr; }

void AllocationGauge::note(std::size_t size) {
  largest_ = std::max(largest_, size);
  total_ += size;
}

}  // namespace consolidator

void* operator new(std::size_t size) { return consolidator::allocateOrThrow(size); }

void* operator new[](std::size_t size) { return consolidator::allocateOrThrow(size); }

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return consolidator::allocate(size);
}

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return consolidator::allocate(size);
}

void operator delete(void* memory) noexcept { std::free(memory); }

void operator delete[](void* memory) noexcept { std::free(memory); }

void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }

void operator delete(void* memory, const std::nothrow_t&) noexcept { std::free(memory); }

void operator delete[](void* memory, const std::nothrow_t&) noexcept { std::free(memory); }
