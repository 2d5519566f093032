#include "inspect/records/BitCoverage.h"

#include <array>
#include <cstddef>

namespace consolidator::inspect {

std::string_view nameOf(CoverageState state) {
  constexpr std::array<std::string_view, 4> names{"none", "doubtful", "with_gap", "without_gap"};
  return names.at(static_cast<std::size_t>(state));
}

BitCoverage coverageOf(const consolidated::Locations& locations) {
  BitCoverage found;
  for (std::size_t bit = 0; bit < locations.size(); ++bit) {
    if (locations[bit] == consolidated::Location()) continue;
    ++found.bits;
    found.highest = static_cast<std::uint32_t>(bit);
  }
  if (found.bits == 0) return found;
  found.state = found.bits == locations.size() ? CoverageState::WithoutGap : CoverageState::WithGap;
  return found;
}

BitCoverage doubtful(BitCoverage coverage) {
  if (coverage.bits > 0) coverage.state = CoverageState::Doubtful;
  return coverage;
}

}  // namespace consolidator::inspect
