#pragma once

#include <cstdint>

namespace consolidator {

/// The key of a hash, 128 bits.
struct HashSeed {
  std::uint64_t first = 0;
  std::uint64_t second = 0;

  /// Draws a seed from the system's random numbers.
  static HashSeed random();

  /// The seed of this process, drawn when it is first asked for.
  static const HashSeed& ofProcess() {
    static const HashSeed seed = random();
    return seed;
  }
};

}  // namespace consolidator
