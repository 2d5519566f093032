#pragma once

#include "inspect/Findings.h"
#include "inspect/HtmlWriter.h"

#include <string>

namespace consolidator::inspect {

/// The numbers of errors, warnings and notes in words.
std::string countsOf(const Findings& findings);

/// Writes what was found in a file, as a section of the page.
void writeFindingTable(HtmlWriter& html, const Findings& findings);

}  // namespace consolidator::inspect
