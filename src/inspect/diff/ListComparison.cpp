#include "inspect/diff/ListComparison.h"

#include "consolidated/Locations.h"

#include <algorithm>

namespace consolidator::inspect {

namespace {

bool isSame(const consolidated::Locations& before, const consolidated::Locations& after) {
  return before.size() == after.size() && std::equal(before.begin(), before.end(), after.begin());
}

}  // namespace

bool isSame(const consolidated::Text& /*before*/, const consolidated::Text& /*after*/) {
  return true;
}

bool isSame(const consolidated::Variable& before, const consolidated::Variable& after) {
  const auto bitsBefore = before.instanceBits();
  const auto bitsAfter = after.instanceBits();
  return before.second().view() == after.second().view() &&
         before.cType().view() == after.cType().view() && bitsBefore.size() == bitsAfter.size() &&
         std::equal(bitsBefore.begin(), bitsBefore.end(), bitsAfter.begin(),
                    [](const auto& a, const auto& b) { return isSame(a, b); });
}

bool isSame(const consolidated::HardwareVariable& before,
            const consolidated::HardwareVariable& after) {
  return isSame(before.logicLocations(), after.logicLocations());
}

}  // namespace consolidator::inspect
