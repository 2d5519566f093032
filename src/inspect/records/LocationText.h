#pragma once

#include "consolidated/Locations.h"

#include <optional>
#include <string>
#include <string_view>

namespace consolidator::inspect {

/// A location as people see and give it: the first number in hexadecimal, then the second one, such
/// as "0x1A2F:77".
std::string textOf(const consolidated::Location& location);

/// Reads "FIRST:SECOND": each a decimal number or, after "0x", a hexadecimal one, below 2^32; none
/// if it is not that.
std::optional<consolidated::Location> parseLocation(std::string_view text);

}  // namespace consolidator::inspect
