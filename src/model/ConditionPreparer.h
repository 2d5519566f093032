#pragma once

#include <string>
#include <string_view>

namespace consolidator {

/// Whether a condition always holds and is dropped: exactly "(1'b1 == 1'b1)", byte for byte.
bool isTriviallyTrue(std::string_view condition);

/// Brings one condition, infix as the hardware description has it, into the form that debuggers
/// expect: the operator first, names qualified by "$i/", for which they put an instance path.
/// "(a == 1)" becomes "== 1 $i/a".
///
/// Operators have no precedence and parentheses no meaning: a leading "(" and, in a text that
/// holds a ")" anywhere, the last character are cut off, each on its own, and what is left is read
/// token by token. Of the two operands the later one comes first, so preparing a prepared
/// condition swaps its operands. A malformed text (an operator short of operands, or no operand at
/// all) is returned with its names qualified, each token followed by a space.
///
/// Takes time and memory linear in the text.
std::string prepareConditionText(std::string_view condition);

}  // namespace consolidator
