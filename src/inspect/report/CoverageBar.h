#pragma once

#include "inspect/coverage/CoverageCounts.h"
#include "inspect/report/HtmlWriter.h"

#include <string>

namespace consolidator::inspect {

/// Such as "2 of 4 located, 1 with gaps"; "none" where there is nothing to locate.
std::string wordsOf(const CoverageCounts& counts);

/// Writes a cell with a bar and these words.
void writeCoverageBar(HtmlWriter& html, const CoverageCounts& counts);

}  // namespace consolidator::inspect
