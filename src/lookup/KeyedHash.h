#pragma once

#include "lookup/SipHash.h"

#include <cstdint>
#include <string_view>

namespace consolidator {

/// The hash of all indexes. Files may come from an attacker, who could choose keys that all collide
/// in a hash without a seed, so that n of them take n² steps. One round for a word and three at the
/// end are usual for hash tables.
using KeyedHash = SipHash<1, 3>;

/// The keyed hash of a text.
inline std::uint64_t keyedHash(std::string_view text,
                               const HashSeed& seed = HashSeed::ofProcess()) {
  KeyedHash hash(seed);
  hash.add(text);
  return hash.finish();
}

/// The keyed hash of a number.
inline std::uint64_t keyedHash(std::uint64_t number, const HashSeed& seed = HashSeed::ofProcess()) {
  KeyedHash hash(seed);
  hash.add(number);
  return hash.finish();
}

}  // namespace consolidator
