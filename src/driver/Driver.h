#pragma once

namespace consolidator {

class ConsolidatedFile;
class ConsolidatorOptions;

/// One consolidation from start to end: opens the consolidated file, checks it, then either dumps
/// a section or reads the inputs and saves. Returns the exit status: 1 when the file cannot be
/// opened, belongs to another project or has too new a version, 0 otherwise. An error on the
/// command line ends the process, see ConsolidatorOptions.
///
/// Works on `file` and closes its stream at the end, whatever the status. The caller may end the
/// process instead of freeing what `file` holds.
int runConsolidation(int argc, const char* const* argv, ConsolidatedFile& file);

/// The same with a command line that was parsed.
int runConsolidation(const ConsolidatorOptions& options, ConsolidatedFile& file);

}  // namespace consolidator
