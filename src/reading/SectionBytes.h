#pragma once

#include "consolidated/Section.h"
#include "consolidated/Text.h"

#include <optional>
#include <string_view>

namespace consolidated {

/// The bytes of a section: those from its offset on, cut to signed 32 bits, and as many as its
/// clamped size says; none unless the file has all of them. A section without bytes may stand
/// anywhere.
std::optional<Text> sectionBytes(std::string_view file, const Section& section) noexcept;

}  // namespace consolidated
