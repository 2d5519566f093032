#pragma once

#include "inspect/records/BitCoverage.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace consolidator::inspect {

/// The best that is known of each pair of two numbers, of which few of all possible pairs have
/// anything: 20 bytes for each that is added.
class CoveredPairs {
 public:
  struct Pair {
    std::uint32_t first = 0;
    std::uint32_t second = 0;
    BitCoverage coverage;
  };

  /// Adds what is known of a pair, unless that is nothing.
  void add(std::uint32_t first, std::uint32_t second, BitCoverage coverage);

  /// Keeps the best of each pair; to be called once, before those that follow.
  void finish();

  /// What is known of a pair. Takes a time logarithmic in their number.
  BitCoverage find(std::uint32_t first, std::uint32_t second) const;

  /// All pairs of which something is known, each once, by the first number.
  std::span<const Pair> all() const { return pairs_; }

 private:
  std::vector<Pair> pairs_;
};

}  // namespace consolidator::inspect
