#pragma once

#include "consolidated/File.h"
#include "inspect/report/HtmlWriter.h"

namespace consolidator::inspect {

/// Writes the sections of a file: as a bar to scale, and as a table. Of a table with more entries
/// than any real one the first are shown.
void writeSectionPicture(HtmlWriter& html, const consolidated::File& file);

}  // namespace consolidator::inspect
