#pragma once

#include "consolidated/BreakableCondition.h"
#include "consolidated/HardwareVariable.h"
#include "consolidated/Kernel.h"
#include "consolidated/Locations.h"
#include "consolidated/Variable.h"
#include "inspect/JsonDocument.h"

namespace consolidator::inspect {

/// Each writes one item as it stands in the document of the command "json"; other documents hold
/// the same items. Texts are those that the tool reads.
void writeItem(JsonDocument& document, const consolidated::Locations& locations);
void writeItem(JsonDocument& document, const consolidated::Variable& variable);
void writeItem(JsonDocument& document, const consolidated::HardwareVariable& variable);
void writeItem(JsonDocument& document, const consolidated::BreakableCondition& condition);
void writeItem(JsonDocument& document, const consolidated::Kernel& kernel);

}  // namespace consolidator::inspect
