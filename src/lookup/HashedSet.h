#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace consolidator {

/// A set of keyed hashes, which stand for what was hashed: 8 bytes a slot, at most half of them
/// used. Of a million texts, two that differ count as equal once in 30 million files.
class HashedSet {
 public:
  /// Returns whether the hash was not there yet.
  bool add(std::uint64_t hash);

 private:
  bool addToSlots(std::uint64_t hash);
  void grow();

  std::vector<std::uint64_t> slots_;  // a power of two; 0 in those that are free
  std::size_t count_ = 0;
};

}  // namespace consolidator
