#include "inspect/coverage/ConditionCounts.h"

#include "inspect/verify/ConditionChecks.h"

namespace consolidator::inspect {

ConditionCounts ConditionCounts::of(const consolidated::Kernel& kernel, const LineTables& tables) {
  ConditionCounts counts;
  for (const consolidated::BreakableCondition& condition : kernel.breakableConditions()) {
    ++counts.total;
    if (isPrefixForm(condition.condition().view())) ++counts.wellFormed;
    if (condition.kind() != consolidated::ConditionKind::SourceLine) continue;
    ++counts.sourceLines;
    if (tables.pathOf(condition.file().view(), condition.line())) ++counts.inLineTable;
  }
  return counts;
}

}  // namespace consolidator::inspect
