#include "lookup/HashSeed.h"

#include <sys/auxv.h>
#include <sys/random.h>

#include <cstring>

namespace consolidator {

// A system that has just started may have no random numbers yet, or a sandbox may refuse them. Then
// those serve that the system gives to every process at its start.
HashSeed HashSeed::random() {
  HashSeed seed;
  if (getrandom(&seed, sizeof seed, GRND_NONBLOCK) == sizeof seed) return seed;
  // NOLINTNEXTLINE(performance-no-int-to-ptr): the vector holds addresses as numbers
  const auto* const left = reinterpret_cast<const char*>(getauxval(AT_RANDOM));
  if (left != nullptr) std::memcpy(&seed, left, sizeof seed);
  return seed;
}

}  // namespace consolidator
