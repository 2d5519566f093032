#include "inspect/coverage/CoveredPairs.h"

#include <algorithm>
#include <tuple>

namespace consolidator::inspect {

namespace {

using CoveredPair = CoveredPairs::Pair;

auto numbersOf(const CoveredPair& pair) { return std::tuple(pair.first, pair.second); }

}  // namespace

void CoveredPairs::add(std::uint32_t first, std::uint32_t second, BitCoverage coverage) {
  if (coverage.state != CoverageState::None) pairs_.push_back({first, second, coverage});
}

void CoveredPairs::finish() {
  std::sort(pairs_.begin(), pairs_.end(), [](const CoveredPair& a, const CoveredPair& b) {
    return std::tuple(numbersOf(a), b.coverage) < std::tuple(numbersOf(b), a.coverage);
  });
  const auto rest = std::unique(
      pairs_.begin(), pairs_.end(),
      [](const CoveredPair& a, const CoveredPair& b) { return numbersOf(a) == numbersOf(b); });
  pairs_.erase(rest, pairs_.end());
}

BitCoverage CoveredPairs::find(std::uint32_t first, std::uint32_t second) const {
  const std::tuple wanted(first, second);
  const auto found = std::lower_bound(
      pairs_.begin(), pairs_.end(), wanted,
      [](const CoveredPair& pair, const auto& numbers) { return numbersOf(pair) < numbers; });
  const bool isThere = found != pairs_.end() && numbersOf(*found) == wanted;
  return isThere ? found->coverage : BitCoverage();
}

}  // namespace consolidator::inspect
