#pragma once

#include "inspect/records/BitCoverage.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <numeric>

namespace consolidator::inspect {

/// How many pairs of a name and an instance are in each state.
class CoverageCounts {
 public:
  std::uint64_t operator[](CoverageState state) const {
    return counts_[static_cast<std::size_t>(state)];
  }

  std::uint64_t& operator[](CoverageState state) {
    return counts_[static_cast<std::size_t>(state)];
  }

  std::uint64_t total() const {
    return std::accumulate(counts_.begin(), counts_.end(), std::uint64_t{0});
  }

  CoverageCounts& operator+=(const CoverageCounts& other) {
    for (std::size_t i = 0; i < counts_.size(); ++i) counts_[i] += other.counts_[i];
    return *this;
  }

  friend bool operator==(const CoverageCounts&, const CoverageCounts&) = default;

 private:
  std::array<std::uint64_t, 4> counts_{};
};

}  // namespace consolidator::inspect
