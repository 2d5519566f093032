#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace consolidator {

/// Hash index from keys to positions in a list that somebody else holds: open addressing with
/// linear probing, 8 bytes a slot. It stores the low 32 bits of each hash beside the position, so
/// that a probe touches the list only where the hashes agree.
///
/// Positions must be added in increasing order; of several equal keys the one added first is found.
///
/// The copy of an index is empty, so that copies of lists do not pay for an index before they are
/// searched.
class PositionIndex {
 public:
  static constexpr std::size_t none = static_cast<std::size_t>(-1);

  PositionIndex() = default;

  PositionIndex(const PositionIndex& /*other*/) {}

  PositionIndex(PositionIndex&& other) noexcept
      : slots_(std::move(other.slots_)), count_(std::exchange(other.count_, 0)) {}

  PositionIndex& operator=(const PositionIndex& /*other*/) {
    clear();
    return *this;
  }

  PositionIndex& operator=(PositionIndex&& other) noexcept {
    slots_ = std::move(other.slots_);
    count_ = std::exchange(other.count_, 0);
    return *this;
  }

  ~PositionIndex() = default;

  bool empty() const { return count_ == 0; }

  void clear() {
    slots_.clear();
    count_ = 0;
  }

  /// Adds a position (below 2^32 - 1) under the hash of its key.
  void add(std::size_t hash, std::size_t position) {
    if (2 * (count_ + 1) > slots_.size()) grow();
    place({static_cast<std::uint32_t>(hash), static_cast<std::uint32_t>(position)});
    ++count_;
  }

  /// Returns the first position added under `hash` for which `isMatch(position)` holds, or `none`.
  template <typename Predicate>
  std::size_t find(std::size_t hash, Predicate isMatch) const {
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

  void place(Slot slot) {
    std::size_t i = slot.hash & mask();
    while (slots_[i].position != unused) i = (i + 1) & mask();
    slots_[i] = slot;
  }

  void grow();

  std::vector<Slot> slots_;  // a power of two, at most half of them used
  std::size_t count_ = 0;
};

}  // namespace consolidator
