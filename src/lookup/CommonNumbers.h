#pragma once

#include "lookup/KeyedHash.h"
#include "lookup/KeyedList.h"
#include "lookup/NumbersByText.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace consolidator {

/// Finds the numbers that were noted with a text of one collection and with any of several texts of
/// another one: the kernels that have a register and one of the paths in a name.
///
/// Usually a text has few numbers. An attacker's collections may have many texts with many numbers
/// each and few in common; what two texts have in common is therefore remembered, so that asking
/// again is quick. The memory for that is in proportion to the collections.
class CommonNumbers {
 public:
  /// The collections must outlive this object; their numbers must be below `end`.
  CommonNumbers(const NumbersByText& ones, const NumbersByText& others, std::size_t end);

  /// Sets `common` to the numbers that the text at position `one` has in common with any of those
  /// at the positions `others`, in increasing order and each once. Several others are compared at
  /// once if they have no more than `cheap` numbers in all, else one by one.
  void find(std::size_t one, const std::vector<std::uint32_t>& others, std::size_t cheap,
            std::vector<std::uint32_t>& common);

 private:
  struct Pair {
    std::uint64_t positions = 0;
    std::vector<std::uint32_t> common;
  };

  struct PairKey {
    std::uint64_t operator()(const Pair& pair) const { return pair.positions; }

    static std::uint64_t hash(std::uint64_t positions) { return keyedHash(positions); }
  };

  std::size_t countNumbers(std::size_t one, const std::vector<std::uint32_t>& others) const;
  void findAtOnce(std::size_t one, const std::vector<std::uint32_t>& others,
                  std::vector<std::uint32_t>& common);
  void appendPair(std::size_t one, std::size_t other, std::vector<std::uint32_t>& common);

  const NumbersByText& ones_;
  const NumbersByText& others_;
  KeyedList<Pair, PairKey> pairs_;
  std::size_t mostKept_;                // pairs and numbers in them
  std::size_t kept_ = 0;                // of these
  std::vector<std::uint64_t> foundBy_;  // for each number the last search that found it at once
  std::uint64_t searchNumber_ = 0;
};

}  // namespace consolidator
