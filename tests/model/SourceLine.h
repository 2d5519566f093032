#pragma once

#include "model/BreakableCondition.h"

#include <cstdint>
#include <string>

namespace consolidator {

/// A condition that holds where the kernel executes a line of its source.
inline BreakableCondition sourceLine(const std::string& text, std::uint32_t line,
                                     const std::string& file) {
  BreakableCondition condition(ConditionKind::SourceLine, text);
  condition.line = line;
  condition.file = file;
  return condition;
}

}  // namespace consolidator
