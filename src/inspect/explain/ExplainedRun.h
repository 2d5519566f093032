#pragma once

#include "inspect/explain/Explanation.h"
#include "inspect/explain/ObservedFiles.h"
#include "inspect/explain/ToolLine.h"

#include <string>
#include <vector>

namespace consolidator::inspect {

/// Does what a run of the tool with these words after its name does, except touching a file, and
/// returns what happens. The tool's own readers, merge, container and driver do the work. Inputs
/// that are pipes are read.
Explanation explainRun(const std::vector<std::string>& words);

/// Does the same, except that the files that the run writes are opened by `files`.
Explanation observeRun(const ToolLine& line, ObservedFiles& files);

/// Whether a run dumps to its own consolidated file, which is emptied when it is opened for the
/// dump, before it is read.
bool dumpsOverItself(const ToolLine& line);

}  // namespace consolidator::inspect
