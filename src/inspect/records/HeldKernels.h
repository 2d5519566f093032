#pragma once

#include "consolidated/File.h"

#include <cstddef>
#include <string_view>

namespace consolidator::inspect {

/// How many kernels of a file are held at once, at most: more than there is room for where no
/// sections overlap, but no number that its table alone makes up.
std::size_t mostHeldKernels(const consolidated::File& file);

/// Why there are more than these, as a sentence.
inline constexpr std::string_view repeatsKernels =
    "Its sections hold the same kernels again and again.";

}  // namespace consolidator::inspect
