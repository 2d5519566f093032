#pragma once

#include "inspect/coverage/CoverageCounts.h"
#include "inspect/coverage/KernelCoverage.h"
#include "inspect/coverage/Percent.h"
#include "inspect/records/VariableKind.h"

#include <optional>

namespace consolidator::inspect {

/// The states of all pairs of a name and an instance in a file.
class CoverageSummary {
 public:
  void add(const KernelCoverage& kernel);

  const CoverageCounts& counts(VariableKind kind) const {
    return kind == VariableKind::Argument ? arguments_ : variables_;
  }

  /// How many of the pairs have locations without a gap; nothing where there are no pairs.
  std::optional<Percent> percent(VariableKind kind) const;

 private:
  CoverageCounts arguments_;
  CoverageCounts variables_;
};

}  // namespace consolidator::inspect
