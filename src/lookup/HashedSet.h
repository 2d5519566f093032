#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace consolidator {

/// A set of keyed hashes, which stand for what was hashed, each with up to eight members: 8 bytes a
/// hash, in a table that is at most half full. All but the low eight bits of a hash count. Of
/// a million texts, two that differ count as equal once in a hundred thousand files.
class HashedSet {
 public:
  /// Adds a member, from 0 to 7, of what has this hash. Returns whether it was not there yet.
  bool add(std::uint64_t hash, unsigned member = 0);

 private:
  std::uint64_t& slotOf(std::uint64_t hash);
  void grow();

  // A power of two; a hash with a bit for each of its members in its low bits, 0 if it is free.
  std::vector<std::uint64_t> slots_;
  std::size_t count_ = 0;
};

}  // namespace consolidator
