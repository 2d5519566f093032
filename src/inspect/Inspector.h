#pragma once

#include "inspect/output/Messages.h"
#include "inspect/output/OutputSink.h"
#include "inspect/output/Status.h"

#include <string>
#include <vector>

namespace consolidator::inspect {

/// Runs the command that the words of a command line name, the program's name not among them, and
/// returns the exit status. Writes data to `out`, flushed at the end, and messages to `messages`.
/// `hasColour` says whether `out` takes colours.
Status runInspector(const std::vector<std::string>& words, OutputSink& out, Messages& messages,
                    bool hasColour);

}  // namespace consolidator::inspect
