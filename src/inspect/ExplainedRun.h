#pragma once

#include "inspect/Explanation.h"

#include <string>
#include <vector>

namespace consolidator::inspect {

/// Does what a run of the tool with these words after its name does, except touching a file, and
/// returns what happens. The tool's own readers, merge, container and driver do the work. Inputs
/// that are pipes are read.
Explanation explainRun(const std::vector<std::string>& words);

}  // namespace consolidator::inspect
