#pragma once

#include "consolidated/StdioFile.h"

#include <string>

namespace consolidator::inspect {

/// A stream that can be written and positioned like a file and keeps nothing, except that it
/// appends what is written to `copy`, if that is not null. Null when there is no memory for one.
StdioFile openNullStream(std::string* copy = nullptr);

}  // namespace consolidator::inspect
