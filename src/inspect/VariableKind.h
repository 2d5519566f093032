#pragma once

namespace consolidator::inspect {

/// What an argument or a local variable is called.
enum class VariableKind { Argument, Variable };

}  // namespace consolidator::inspect
