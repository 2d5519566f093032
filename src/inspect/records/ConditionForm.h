#pragma once

#include <string>
#include <string_view>

namespace consolidator::inspect {

/// What makes two conditions the same, however often their files were saved: the words, each two
/// separated by one space. Every save swaps the operands of a condition that is one operator with
/// two operands; in its form the operator keeps its place and the lesser operand comes first.
///
/// Other conditions without parentheses keep their words in a save. Parentheses do not: each save
/// may cut one off, which is a change, so they are words like any others.
///
/// Takes time and memory linear in the text.
std::string normalForm(std::string_view condition);

}  // namespace consolidator::inspect
