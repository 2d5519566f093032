#pragma once

#include <string>
#include <string_view>

namespace consolidator::inspect {

/// The components of a path, the last one first, each with "/" after it: "k.c/src/" for
/// "src/./k.c" and for "/src/x/../k.c". So one path ends in the components of another if its text
/// begins with that of the other. ".." at the beginning of a path, which tells nothing of what
/// follows, is left out.
std::string reversedComponents(std::string_view path);

}  // namespace consolidator::inspect
