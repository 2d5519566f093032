#pragma once

#include <cstdint>
#include <string_view>

namespace consolidator {

/// The number that the decimal digits at the start of a text form: 0 when there are none (a sign or
/// white space counts as none), 2^63 - 1 when it is greater than that.
std::uint64_t leadingDecimal(std::string_view text);

}  // namespace consolidator
