#include "model/ConditionPreparer.h"

#include "model/PutText.h"

#include <algorithm>

namespace consolidator {

namespace {

constexpr std::string_view qualifier = "$i/";

bool isWhiteSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

bool isLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

// Names are operands, since they are qualified in the end.
bool isOperand(std::string_view token) {
  const char first = token.front();
  return first == '$' || (first >= '0' && first <= '9') || isLetter(first);
}

char* putQualified(char* to, std::string_view token) {
  if (isLetter(token.front())) to = putText(to, qualifier);
  return putText(to, token);
}

// Calls `use` with every token of the text in order.
template <typename Use>
void forEachToken(std::string_view text, Use use) {
  const char* const textEnd = text.data() + text.size();
  const char* start = std::find_if_not(text.data(), textEnd, isWhiteSpace);
  while (start != textEnd) {
    const char* const end = std::find_if(start, textEnd, isWhiteSpace);
    use(std::string_view(start, static_cast<std::size_t>(end - start)));
    start = std::find_if_not(end, textEnd, isWhiteSpace);
  }
}

// The two cuts are not paired, deliberately: either may happen without the other, and the last
// character goes whatever it is.
std::string_view unwrap(std::string_view text) {
  if (text.starts_with('(')) text.remove_prefix(1);
  if (text.find(')') != std::string_view::npos) text.remove_suffix(1);
  return text;
}

}  // namespace

bool isTriviallyTrue(std::string_view condition) { return condition == "(1'b1 == 1'b1)"; }

std::string_view ConditionPreparer::prepare(std::string_view condition) {
  const std::string_view text = unwrap(condition);
  return readTokens(text) ? prefixForm() : qualifiedTokens(text);
}

// Returns whether the text is well-formed: its value is the top operand then.
bool ConditionPreparer::readTokens(std::string_view text) {
  nodes_.clear();
  operands_.clear();
  pendingOperator_ = {};
  longestText_ = 0;
  bool wellFormed = true;
  forEachToken(text, [&](std::string_view token) {
    longestText_ += qualifier.size() + token.size() + 1;
    if (isOperand(token)) {
      operands_.push_back(addNode({token}));
    } else {
      // Every operator reduces the pending one first: there is no precedence.
      wellFormed = wellFormed && reduce();
      pendingOperator_ = token;
    }
  });
  return wellFormed && reduce() && !operands_.empty();
}

// Joins the pending operator, if there is one, with the two top operands, the later one first.
// Returns false when there are fewer than two.
bool ConditionPreparer::reduce() {
  if (pendingOperator_.empty()) return true;
  if (operands_.size() < 2) return false;
  const std::uint32_t right = operands_.back();
  operands_.pop_back();
  operands_.back() = addNode({pendingOperator_, right, operands_.back()});
  pendingOperator_ = {};
  return true;
}

std::uint32_t ConditionPreparer::addNode(const Node& node) {
  nodes_.push_back(node);
  return static_cast<std::uint32_t>(nodes_.size() - 1);
}

// The text of the top operand, which is taken off the stack.
std::string_view ConditionPreparer::prefixForm() {
  char* to = makeRoom();
  // What is to be written stands on top of the operands, the next one last.
  const std::size_t rest = operands_.size() - 1;
  while (operands_.size() > rest) {
    const Node& node = nodes_[operands_.back()];
    operands_.pop_back();
    to = putQualified(to, node.token);
    *to++ = ' ';
    if (node.right == leaf) continue;
    operands_.push_back(node.left);
    operands_.push_back(node.right);
  }
  return textUpTo(to - 1);
}

std::string_view ConditionPreparer::qualifiedTokens(std::string_view text) {
  char* to = makeRoom();
  forEachToken(text, [&](std::string_view token) {
    to = putQualified(to, token);
    *to++ = ' ';
  });
  return textUpTo(to);
}

char* ConditionPreparer::makeRoom() {
  if (text_.size() < longestText_) text_.resize(longestText_);
  return text_.data();
}

std::string_view ConditionPreparer::textUpTo(const char* end) const {
  return std::string_view(text_).substr(0, static_cast<std::size_t>(end - text_.data()));
}

}  // namespace consolidator
