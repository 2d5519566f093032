#pragma once

#include "consolidated/Kernel.h"
#include "inspect/command/Command.h"

#include <string>
#include <string_view>

namespace consolidator::inspect {

/// Writes the lines of locations, eight of them to a line, after the number of the first bit.
void writeLocations(Console& console, const consolidated::Locations& locations,
                    std::string_view indent);

/// An argument or variable in one line, without its bits.
std::string describe(const consolidated::Variable& variable);

/// Writes all that is in a kernel, for people.
void writeKernelInFull(Console& console, const consolidated::Kernel& kernel);

}  // namespace consolidator::inspect
