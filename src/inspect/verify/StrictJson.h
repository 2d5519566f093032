#pragma once

#include <cstddef>
#include <string_view>

namespace consolidator::inspect {

/// Where a text stops being strict JSON (RFC 8259, in UTF-8): at the first byte that cannot follow
/// what precedes it, at a sequence that is no UTF-8, or at the end of a text that is not done; npos
/// where it is strict. Takes linear time; the memory is a bit for each level of nesting.
std::size_t findNotStrict(std::string_view text);

}  // namespace consolidator::inspect
