#pragma once

#include "consolidated/Locations.h"

#include <cstdint>
#include <string_view>
#include <tuple>

namespace consolidator::inspect {

/// How well it is known where the bits of a variable are in an instance, from worst to best.
enum class CoverageState : std::uint8_t {
  None,        ///< no bit has a location
  Doubtful,    ///< only registers have that may belong to another instance
  WithGap,     ///< bits have, others below the highest of them or after it are stored as (0, 0)
  WithoutGap,  ///< each stored bit has
};

/// The name of a state in JSON documents: "none", "doubtful", "with_gap" or "without_gap".
std::string_view nameOf(CoverageState state);

/// What is known of the bits of one variable in one instance. The greater of two is the better.
struct BitCoverage {
  CoverageState state = CoverageState::None;
  std::uint32_t bits = 0;     ///< how many have a location other than (0, 0)
  std::uint32_t highest = 0;  ///< the highest of these; 0 where there is none

  friend bool operator==(const BitCoverage&, const BitCoverage&) = default;

  friend bool operator<(const BitCoverage& a, const BitCoverage& b) {
    return std::tie(a.state, a.bits, a.highest) < std::tie(b.state, b.bits, b.highest);
  }
};

/// What is known by these locations; never doubtful. How many bits there ought to be is not stored
/// in a file, so bits missing at the top cannot be seen. Takes a time linear in their number.
BitCoverage coverageOf(const consolidated::Locations& locations);

/// The same by locations that may be those of another instance.
BitCoverage doubtful(BitCoverage coverage);

}  // namespace consolidator::inspect
