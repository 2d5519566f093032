#pragma once

#include "inspect/coverage/Percent.h"
#include "inspect/records/VariableKind.h"

#include <optional>
#include <string_view>

namespace consolidator::inspect {

/// How much of the arguments or variables of a file is to have locations without a gap.
struct CoverageGoal {
  VariableKind kind;
  Percent least;

  /// Reads "80", "variables=80.5" or "arguments=100"; a number alone is for variables.
  static std::optional<CoverageGoal> parse(std::string_view text);
};

}  // namespace consolidator::inspect
