#pragma once

#include "inspect/verify/Verification.h"

#include <string>

namespace consolidator::inspect {

/// Why the file at this path is not sound: the sentence of the first error; empty if it is.
std::string whyUnsound(const std::string& path, VerificationDepth depth);

/// Whether two files are complete and equal as "diff" calls it. A file that cannot be read equals
/// none.
bool areEqual(const std::string& before, const std::string& after);

}  // namespace consolidator::inspect
