#pragma once

#include "consolidated/Section.h"
#include "inspect/output/JsonDocument.h"

#include <string_view>

namespace consolidator::inspect {

/// The name of a kind in JSON documents and on the command line: "project_name", "dwarf",
/// "kernel_records" or "json", and "unknown" for all other numbers.
std::string_view nameOf(consolidated::SectionKind kind);

/// Writes an entry of the section table as it stands in the document of the command "json".
void writeItem(JsonDocument& document, const consolidated::Section& section);

}  // namespace consolidator::inspect
