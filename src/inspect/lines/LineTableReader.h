#pragma once

#include "inspect/lines/SourceLines.h"

namespace consolidator::inspect {

/// Reads the line tables of a DWARF file, which may be anything: by libdw, with relocations applied
/// and compressed sections unpacked. Links to other files lead nowhere where none can be opened.
///
/// For a process that may crash, hang or run out of memory (see runLimited()). The descriptor is
/// that of a regular file, which is closed.
SourceLines readLineTables(int descriptor);

}  // namespace consolidator::inspect
