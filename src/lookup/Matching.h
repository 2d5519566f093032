#pragma once

#include "lookup/KeyedHash.h"
#include "lookup/PositionIndex.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace consolidator {

/// Matches elements with those of a sequence by their keys: the n-th that is asked for with the
/// n-th of the same key. Each element of the sequence is given away once.
///
/// `Sequence` has a size() below 2^32 - 1 and an operator[]; `keyOf` makes a text of an element.
/// Takes linear time whatever the keys are, and up to 36 bytes for each element.
template <typename Sequence, typename KeyOf>
class Matching {
 public:
  Matching(const Sequence& sequence, KeyOf keyOf)
      : sequence_(&sequence),
        keyOf_(std::move(keyOf)),
        lasts_(sequence.size()),
        next_(sequence.size()) {
    for (std::size_t i = sequence.size(); i-- > 0;) addInFront(i);
  }

  /// Gives away the first element of that key that is left, if any is: its position.
  std::optional<std::size_t> take(std::string_view key) {
    const std::size_t last = lasts_.find(keyedHash(key), hasKey(key));
    if (last == PositionIndex::none || next_[last] == taken) return std::nullopt;
    const std::size_t first = next_[last];
    next_[last] = first == last ? taken : next_[first];
    next_[first] = taken;
    return first;
  }

  /// Whether the element at a position is still there.
  bool isLeft(std::size_t position) const { return next_[position] != taken; }

 private:
  static constexpr std::uint32_t taken = std::numeric_limits<std::uint32_t>::max();

  auto hasKey(std::string_view key) const {
    return [this, key](std::size_t position) { return keyOf_((*sequence_)[position]) == key; };
  }

  void addInFront(std::size_t position) {
    const auto& key = keyOf_((*sequence_)[position]);
    const std::size_t last = lasts_.findOrAdd(keyedHash(key), position, hasKey(key));
    const auto place = static_cast<std::uint32_t>(position);
    next_[position] = last == position ? place : next_[last];
    next_[last] = place;
  }

  const Sequence* sequence_;
  KeyOf keyOf_;
  PositionIndex lasts_;              // the last element of each key
  std::vector<std::uint32_t> next_;  // of the same key; after the last one the first that is left
};

}  // namespace consolidator
