#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator {

/// Whether a condition always holds and is dropped: exactly "(1'b1 == 1'b1)", byte for byte.
bool isTriviallyTrue(std::string_view condition);

/// Whether a word of a condition, which is not empty, is an operand: a name, a name qualified
/// already or a number. All other words are operators.
bool isOperand(std::string_view word);

/// Turns conditions from the infix form of the hardware description into the form that debuggers
/// expect: the operator first, and names qualified by "$i/", which debuggers replace by an instance
/// path. "(a == 1)" becomes "== 1 $i/a".
///
/// Operators have no precedence and parentheses no meaning: a leading "(" and, in a text that holds
/// a ")" anywhere, the last character are cut off, each on its own, and the rest is read token by
/// token. Of the two operands the later one comes first, so preparing a prepared condition swaps
/// its operands. A malformed text (an operator that lacks operands, or no operand at all) is
/// returned with its names qualified, each token followed by a space.
///
/// Takes time and memory linear in the text. The memory is kept from one condition to the next.
class ConditionPreparer {
 public:
  /// Returns the prepared condition. The view holds until the next call.
  std::string_view prepare(std::string_view condition);

 private:
  static constexpr std::uint32_t none = static_cast<std::uint32_t>(-1);

  // A token, with its operands if it is an operator that was reduced. Reducing joins nodes instead
  // of texts, so a long chain of operators is not copied again for each of them.
  struct Node {
    std::string_view token;
    std::uint32_t right = none;
    std::uint32_t left = none;
  };

  void readTokens(std::string_view text);
  bool reduceAll();
  bool reduce(std::uint32_t operation);
  std::string_view prefixForm();
  std::string_view qualifiedTokens();
  std::string_view textUpTo(const char* end) const;

  std::vector<Node> nodes_;  // in the order of the text
  std::vector<std::uint32_t> operands_;
  std::string text_;  // has room for the longest result that the conditions so far could give
};

}  // namespace consolidator
