#pragma once

#include <functional>
#include <set>
#include <string>
#include <string_view>

namespace consolidator {

/// Reserved words of the hardware description languages Verilog and VHDL, compared exactly.
using HdlReservedWords = std::set<std::string, std::less<>>;

/// Inserts all 249 words.
void buildHdlReservedWords(HdlReservedWords& words);

/// The set of the whole process. It is empty until restoreReservedWordName() first needs it, so
/// that runs without such names never fill it.
HdlReservedWords& processHdlReservedWords();

/// Gives back the name that high-level synthesis changed because it is a reserved word of the
/// hardware description: `wire_r` becomes `wire`. Every other name is returned unchanged. Fills the
/// set of the process if it is empty and the name has three characters or more.
std::string restoreReservedWordName(std::string_view name);

/// The same by a set that the caller has filled.
std::string restoreReservedWordName(std::string_view name, const HdlReservedWords& words);

/// The change that is undone by it: a name that is one of the words gets "_r" behind it, every
/// other name is returned unchanged. Nothing here calls it; other code is bound to it.
std::string addReservedWordSuffix(std::string_view name, const HdlReservedWords& words);

}  // namespace consolidator
