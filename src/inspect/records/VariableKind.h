#pragma once

#include <string_view>

namespace consolidator::inspect {

/// What an argument or a local variable is called.
enum class VariableKind { Argument, Variable };

/// "argument" or "variable".
inline std::string_view nameOf(VariableKind kind) {
  return kind == VariableKind::Argument ? "argument" : "variable";
}

}  // namespace consolidator::inspect
