// Loaded before all other libraries, this lets a process run out of memory: requests for memory are
// counted from the moment the executable's own code starts, its static objects included, and one of
// them fails, or all from that one on. The environment tells which:
//   ALLOCATION_FAULT=12        the twelfth request fails
//   ALLOCATION_FAULT=12+       the twelfth request and all after it fail
//   ALLOCATION_COUNT=<file>    the number of requests is written there in the end

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

struct Plan {
  unsigned long firstFault = 0;  // none
  bool lasts = false;
  const char* countFile = nullptr;
};

// The functions below have no other way to know.
Plan plan;
bool isStarted = false;
unsigned long requests = 0;

bool isRefused() {
  if (!isStarted) return false;
  ++requests;
  const bool refused = plan.lasts ? plan.firstFault != 0 && requests >= plan.firstFault
                                  : requests == plan.firstFault;
  if (refused) errno = ENOMEM;
  return refused;
}

// Runs before the constructors of the executable.
__attribute__((constructor)) void start() {
  if (const char* const fault = std::getenv("ALLOCATION_FAULT")) {
    char* end = nullptr;
    plan.firstFault = std::strtoul(fault, &end, 10);
    plan.lasts = *end == '+';
  }
  plan.countFile = std::getenv("ALLOCATION_COUNT");
  isStarted = true;
}

__attribute__((destructor)) void finish() {
  isStarted = false;
  if (plan.countFile == nullptr) return;
  std::FILE* const file = std::fopen(plan.countFile, "w");
  if (file == nullptr) return;
  static_cast<void>(std::fprintf(file, "%lu", requests));
  static_cast<void>(std::fclose(file));
}

}  // namespace

extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);

void* malloc(std::size_t size) noexcept { return isRefused() ? nullptr : __libc_malloc(size); }

void* calloc(std::size_t count, std::size_t size) noexcept {
  return isRefused() ? nullptr : __libc_calloc(count, size);
}

void* realloc(void* memory, std::size_t size) noexcept {
  return isRefused() ? nullptr : __libc_realloc(memory, size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
  return isRefused() ? nullptr : __libc_memalign(alignment, size);
}

int posix_memalign(void** memory, std::size_t alignment, std::size_t size) noexcept {
  *memory = isRefused() ? nullptr : __libc_memalign(alignment, size);
  return *memory == nullptr ? ENOMEM : 0;
}
}
