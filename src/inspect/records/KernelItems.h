#pragma once

#include "consolidated/BreakableCondition.h"
#include "consolidated/HardwareVariable.h"
#include "consolidated/Kernel.h"
#include "consolidated/Locations.h"
#include "consolidated/Variable.h"
#include "inspect/output/JsonDocument.h"

#include <string_view>

namespace consolidator::inspect {

/// The name of a kind in JSON documents: "start", "stop" or "source_line", and "error" for all
/// other numbers.
std::string_view nameOf(consolidated::ConditionKind kind);

/// Each writes one item as it stands in the document of the command "json"; other documents hold
/// the same items. Texts are those that the tool reads.
void writeItem(JsonDocument& document, const consolidated::Locations& locations);
void writeItem(JsonDocument& document, const consolidated::Variable& variable);
void writeItem(JsonDocument& document, const consolidated::HardwareVariable& variable);
void writeItem(JsonDocument& document, const consolidated::BreakableCondition& condition);
void writeItem(JsonDocument& document, const consolidated::Kernel& kernel);

/// Each writes the keys of such an item and their values alone, for an object that has others, too.
void writeMembers(JsonDocument& document, const consolidated::Variable& variable);
void writeMembers(JsonDocument& document, const consolidated::HardwareVariable& variable);

}  // namespace consolidator::inspect
