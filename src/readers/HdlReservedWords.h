#pragma once

#include <functional>
#include <set>
#include <string>
#include <string_view>

namespace consolidator {

/// Reserved words of the hardware description languages Verilog and VHDL, compared exactly.
using HdlReservedWords = std::set<std::string, std::less<>>;

/// Inserts all 249 words, for code that wants to list them.
void buildHdlReservedWords(HdlReservedWords& words);

/// Restores a name that high-level synthesis changed because it is a reserved word of the hardware
/// description: `wire_r` becomes `wire`. Every other name is returned unchanged.
std::string restoreReservedWordName(std::string_view name);

/// The reverse: appends "_r" to a name that is one of the words and returns every other name
/// unchanged. Not called here, but other code relies on it.
std::string addReservedWordSuffix(std::string_view name);

}  // namespace consolidator
