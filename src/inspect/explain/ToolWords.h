#pragma once

#include "inspect/command/Options.h"

#include <string>
#include <vector>

namespace consolidator::inspect {

/// Declares that the command line of the tool follows "--", and where its words go. They are not
/// for the parser of this command line, which would look into some.
void declareToolWords(Options& options, std::vector<std::string>& words);

}  // namespace consolidator::inspect
