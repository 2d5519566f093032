#pragma once

#include <functional>
#include <set>
#include <string>
#include <string_view>

namespace consolidator {

/// Reserved words of the hardware description languages Verilog and VHDL, compared exactly.
using HdlReservedWords = std::set<std::string, std::less<>>;

/// Inserts all 249 words, for those who want to see them.
void buildHdlReservedWords(HdlReservedWords& words);

/// Gives back the name that high-level synthesis changed because it is a reserved word of the
/// hardware description: `wire_r` becomes `wire`. Every other name is returned unchanged.
std::string restoreReservedWordName(std::string_view name);

/// The change that is undone by it: a name that is one of the words gets "_r" at its end, every
/// other name is returned unchanged. Nothing here calls it; other code is bound to it.
std::string addReservedWordSuffix(std::string_view name);

}  // namespace consolidator
