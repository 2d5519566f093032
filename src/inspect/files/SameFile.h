#pragma once

#include <string>

namespace consolidator::inspect {

/// Whether a name leads to the file that is open as this descriptor.
bool isSameFile(const std::string& path, int descriptor);

/// Whether two names lead to one file, which may be one that is still to be made.
bool isSameFile(const std::string& a, const std::string& b);

}  // namespace consolidator::inspect
