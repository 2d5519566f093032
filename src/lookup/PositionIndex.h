#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace consolidator {

/// Hash index from keys to positions in a list that the caller holds: open addressing with
/// linear probing, 8 bytes a slot. It stores the low 32 bits of each hash beside the position, so
/// that a probe touches the list only where these agree. Hashes must be spread well in their low 32
/// bits, even if an attacker chose the keys: see keyedHash().
///
/// Of several equal keys only the first is added.
class PositionIndex {
 public:
  static constexpr std::size_t none = static_cast<std::size_t>(-1);

  PositionIndex() = default;

  /// Makes room for `count` positions.
  explicit PositionIndex(std::size_t count) : slots_(std::bit_ceil(2 * (count + 1))) {}

  /// Returns the position added under `hash` for which `isMatch(position)` holds; else adds this
  /// one (below 2^32 - 1) and returns it.
  template <typename Predicate>
  std::size_t findOrAdd(std::uint64_t hash, std::size_t position, Predicate isMatch) {
    if (2 * (count_ + 1) > slots_.size()) grow();
    const auto wanted = static_cast<std::uint32_t>(hash);
    std::size_t i = wanted & mask();
    for (; slots_[i].position != unused; i = (i + 1) & mask()) {
      if (slots_[i].hash == wanted && isMatch(slots_[i].position)) return slots_[i].position;
    }
    slots_[i] = {wanted, static_cast<std::uint32_t>(position)};
    ++count_;
    return position;
  }

  /// Adds a position under the hash of its key, which must not be there yet.
  void add(std::uint64_t hash, std::size_t position) {
    findOrAdd(hash, position, [](std::size_t /*position*/) { return false; });
  }

  /// Returns the position added under `hash` for which `isMatch(position)` holds, or `none`.
  template <typename Predicate>
  std::size_t find(std::uint64_t hash, Predicate isMatch) const {
    if (slots_.empty()) return none;
    const auto wanted = static_cast<std::uint32_t>(hash);
    for (std::size_t i = wanted & mask(); slots_[i].position != unused; i = (i + 1) & mask()) {
      if (slots_[i].hash == wanted && isMatch(slots_[i].position)) return slots_[i].position;
    }
    return none;
  }

 private:
  static constexpr std::uint32_t unused = static_cast<std::uint32_t>(-1);

  struct Slot {
    std::uint32_t hash = 0;
    std::uint32_t position = unused;
  };

  std::size_t mask() const { return slots_.size() - 1; }

  void grow();

  std::vector<Slot> slots_;  // a power of two, at most half of them used
  std::size_t count_ = 0;
};

}  // namespace consolidator
