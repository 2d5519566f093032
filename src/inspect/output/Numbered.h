#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace consolidator::inspect {

/// A number of things: "1 bit", "2 bits".
std::string numbered(std::uint64_t count, std::string_view noun);

}  // namespace consolidator::inspect
