#pragma once

#include "inspect/explain/Explanation.h"
#include "inspect/output/JsonDocument.h"

#include <string_view>

namespace consolidator::inspect {

/// The names of a kind and of an outcome, as documents and texts have them.
std::string_view nameOf(InputKind kind);
std::string_view nameOf(InputOutcome outcome);

/// Writes the members of the document of "explain" after its format.
void writeMembers(JsonDocument& document, const Explanation& explanation);

}  // namespace consolidator::inspect
