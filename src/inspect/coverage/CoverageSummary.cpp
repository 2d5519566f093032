#include "inspect/coverage/CoverageSummary.h"

namespace consolidator::inspect {

void CoverageSummary::add(const KernelCoverage& kernel) {
  for (std::uint32_t instance = 0; instance < kernel.instances(); ++instance) {
    arguments_ += kernel.counts(VariableKind::Argument, instance);
    variables_ += kernel.counts(VariableKind::Variable, instance);
  }
}

std::optional<Percent> CoverageSummary::percent(VariableKind kind) const {
  const CoverageCounts& pairs = counts(kind);
  if (pairs.total() == 0) return std::nullopt;
  return Percent::of(pairs[CoverageState::WithoutGap], pairs.total());
}

}  // namespace consolidator::inspect
