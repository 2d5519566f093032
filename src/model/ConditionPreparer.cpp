#include "model/ConditionPreparer.h"

#include "text/WhiteSpace.h"

#include <algorithm>

namespace consolidator {

namespace {

constexpr std::string_view qualifier = "$i/";

bool isLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

char* putQualified(char* to, std::string_view token) {
  if (isLetter(token.front())) to = std::ranges::copy(qualifier, to).out;
  return std::ranges::copy(token, to).out;
}

// Odd, but to be kept: the two cuts are not paired. Either may happen without the other, and the
// last character goes whatever it is.
std::string_view unwrap(std::string_view text) {
  if (text.starts_with('(')) text.remove_prefix(1);
  if (text.find(')') != std::string_view::npos) text.remove_suffix(1);
  return text;
}

}  // namespace

bool isTriviallyTrue(std::string_view condition) { return condition == "(1'b1 == 1'b1)"; }

// Names are operands, since they are qualified in the end.
bool isOperand(std::string_view word) {
  const char first = word.front();
  return first == '$' || (first >= '0' && first <= '9') || isLetter(first);
}

std::string_view ConditionPreparer::prepare(std::string_view condition) {
  readTokens(unwrap(condition));
  return reduceAll() ? prefixForm() : qualifiedTokens();
}

void ConditionPreparer::readTokens(std::string_view text) {
  nodes_.clear();
  std::size_t longestText = 0;
  const char* const textEnd = text.data() + text.size();
  const char* start = std::find_if_not(text.data(), textEnd, isWhiteSpace);
  while (start != textEnd) {
    const char* const end = std::find_if(start, textEnd, isWhiteSpace);
    nodes_.push_back({std::string_view(start, static_cast<std::size_t>(end - start))});
    longestText += qualifier.size() + nodes_.back().token.size() + 1;
    start = std::find_if_not(end, textEnd, isWhiteSpace);
  }
  if (text_.size() < longestText) text_.resize(longestText);
}

// Returns whether the text is well-formed; if so, the top operand is its value.
bool ConditionPreparer::reduceAll() {
  operands_.clear();
  std::uint32_t pendingOperator = none;
  for (std::uint32_t i = 0; i < nodes_.size(); ++i) {
    if (isOperand(nodes_[i].token)) {
      operands_.push_back(i);
    } else {
      // Every operator reduces the pending one first: there is no precedence.
      if (pendingOperator != none && !reduce(pendingOperator)) return false;
      pendingOperator = i;
    }
  }
  if (pendingOperator != none && !reduce(pendingOperator)) return false;
  return !operands_.empty();
}

// Joins an operator with the two top operands, the later one first. Returns false when there are
// fewer than two.
bool ConditionPreparer::reduce(std::uint32_t operation) {
  if (operands_.size() < 2) return false;
  nodes_[operation].right = operands_.back();
  operands_.pop_back();
  nodes_[operation].left = operands_.back();
  operands_.back() = operation;
  return true;
}

// The text of the top operand, which is taken off the stack.
std::string_view ConditionPreparer::prefixForm() {
  char* to = text_.data();
  // The operands serve as the stack of what is still to be written.
  const std::size_t rest = operands_.size() - 1;
  while (operands_.size() > rest) {
    const Node& node = nodes_[operands_.back()];
    operands_.pop_back();
    to = putQualified(to, node.token);
    *to++ = ' ';
    if (node.right == none) continue;
    operands_.push_back(node.left);
    operands_.push_back(node.right);
  }
  return textUpTo(to - 1);
}

std::string_view ConditionPreparer::qualifiedTokens() {
  char* to = text_.data();
  for (const Node& node : nodes_) {
    to = putQualified(to, node.token);
    *to++ = ' ';
  }
  return textUpTo(to);
}

std::string_view ConditionPreparer::textUpTo(const char* end) const {
  return std::string_view(text_).substr(0, static_cast<std::size_t>(end - text_.data()));
}

}  // namespace consolidator
