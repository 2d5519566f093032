#pragma once

#include "inspect/report/HtmlWriter.h"
#include "inspect/verify/Findings.h"

#include <string>

namespace consolidator::inspect {

/// The numbers of errors, warnings and notes in words.
std::string countsOf(const Findings& findings);

/// Writes what was found in a file, as a section of the page.
void writeFindingTable(HtmlWriter& html, const Findings& findings);

}  // namespace consolidator::inspect
