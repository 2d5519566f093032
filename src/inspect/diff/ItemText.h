#pragma once

#include "inspect/diff/Change.h"
#include "inspect/output/OutputSink.h"

namespace consolidator::inspect {

/// Writes what one side of a change is, for people: on one line, without its end. Memory does not
/// grow with the locations of a variable.
void writeItemText(OutputSink& out, const ChangeItem& item);

}  // namespace consolidator::inspect
