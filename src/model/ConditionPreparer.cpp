#include "model/ConditionText.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace consolidator {

namespace {

constexpr std::string_view whiteSpace = " \t\n\v\f\r";

bool isLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

bool isOperand(std::string_view token) {
  const char first = token.front();
  return first == '$' || (first >= '0' && first <= '9');
}

// Calls `use` with every token of the text in order.
template <typename Use>
void forEachToken(std::string_view text, Use use) {
  std::size_t end = 0;
  for (;;) {
    const std::size_t start = text.find_first_not_of(whiteSpace, end);
    if (start == std::string_view::npos) return;
    end = std::min(text.find_first_of(whiteSpace, start), text.size());
    use(text.substr(start, end - start));
  }
}

// The two cuts are not paired, deliberately: either may happen without the other, and the last
// character goes whatever it is.
std::string_view unwrap(std::string_view text) {
  if (text.starts_with('(')) text.remove_prefix(1);
  if (text.find(')') != std::string_view::npos) text.remove_suffix(1);
  return text;
}

std::string qualifyNames(std::string_view text) {
  std::string qualified;
  forEachToken(text, [&](std::string_view token) {
    if (isLetter(token.front())) qualified += "$i/";
    qualified += token;
    qualified += ' ';
  });
  return qualified;
}

// An expression under construction. Reducing joins nodes instead of texts, so that a long chain
// of operators is not copied again for each of them.
class PrefixExpression {
 public:
  void pushOperand(std::string_view token) { operands_.push_back(addNode({token})); }

  // Every operator reduces the pending one first: there is no precedence.
  bool pushOperator(std::string_view token) {
    if (!reduce()) return false;
    pendingOperator_ = token;
    return true;
  }

  // Joins the pending operator with the two top operands, the later one first. Returns false when
  // there are fewer than two.
  bool reduce() {
    if (!pendingOperator_) return true;
    if (operands_.size() < 2) return false;
    const std::size_t right = operands_.back();
    operands_.pop_back();
    operands_.back() = addNode({*pendingOperator_, right, operands_.back()});
    pendingOperator_.reset();
    return true;
  }

  // The top operand as text; nothing when there is none.
  std::optional<std::string> text(std::size_t expectedSize) const {
    if (operands_.empty()) return std::nullopt;
    std::string result;
    result.reserve(expectedSize);
    std::vector<std::size_t> open{operands_.back()};
    while (!open.empty()) {
      const Node& node = nodes_[open.back()];
      open.pop_back();
      if (!result.empty()) result += ' ';
      result += node.token;
      if (node.right == leaf) continue;
      open.push_back(node.left);
      open.push_back(node.right);
    }
    return result;
  }

 private:
  static constexpr std::size_t leaf = static_cast<std::size_t>(-1);

  struct Node {
    std::string_view token;
    std::size_t right = leaf;
    std::size_t left = leaf;
  };

  std::size_t addNode(Node node) {
    nodes_.push_back(node);
    return nodes_.size() - 1;
  }

  std::vector<Node> nodes_;
  std::vector<std::size_t> operands_;
  std::optional<std::string_view> pendingOperator_;
};

std::optional<std::string> toPrefixForm(std::string_view qualified) {
  PrefixExpression expression;
  bool wellFormed = true;
  forEachToken(qualified, [&](std::string_view token) {
    if (isOperand(token)) {
      expression.pushOperand(token);
    } else {
      wellFormed = wellFormed && expression.pushOperator(token);
    }
  });
  if (!wellFormed || !expression.reduce()) return std::nullopt;
  return expression.text(qualified.size());
}

}  // namespace

bool isTriviallyTrue(std::string_view condition) { return condition == "(1'b1 == 1'b1)"; }

std::string prepareConditionText(std::string_view condition) {
  std::string qualified = qualifyNames(unwrap(condition));
  return toPrefixForm(qualified).value_or(std::move(qualified));
}

}  // namespace consolidator
