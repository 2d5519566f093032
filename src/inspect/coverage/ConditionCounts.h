#pragma once

#include "consolidated/Kernel.h"
#include "inspect/lines/LineTables.h"

#include <cstdint>

namespace consolidator::inspect {

/// How many conditions of a kernel a debugger can use.
struct ConditionCounts {
  std::uint64_t total = 0;
  std::uint64_t wellFormed = 0;   ///< complete in prefix form
  std::uint64_t sourceLines = 0;  ///< that stand for a source position
  std::uint64_t inLineTable = 0;  ///< of these, those for which there is code

  /// Takes a time linear in the texts of the conditions.
  static ConditionCounts of(const consolidated::Kernel& kernel, const LineTables& tables);
};

}  // namespace consolidator::inspect
