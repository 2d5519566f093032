#include "model/TwoStackConditionText.h"

#include <sstream>
#include <stack>
#include <stdexcept>
#include <string_view>

namespace consolidator {

namespace {

constexpr std::string_view letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
constexpr std::string_view operandStarts = "$0123456789";

using TextStack = std::stack<std::string>;

bool startsWithOneOf(const std::string& word, std::string_view characters) {
  return characters.find(word.front()) != std::string_view::npos;
}

std::string popped(TextStack& stack) {
  if (stack.empty()) throw std::runtime_error("malformed condition");
  std::string text = stack.top();
  stack.pop();
  return text;
}

void reduceAll(TextStack& operators, TextStack& operands) {
  while (!operators.empty()) {
    const std::string first = popped(operators);
    const std::string later = popped(operands);
    const std::string earlier = popped(operands);
    operands.push(first + " " + later + " " + earlier);
  }
}

std::string reordered(const std::string& qualified) {
  TextStack operators;
  TextStack operands;
  std::istringstream words(qualified);
  std::string word;
  while (words >> word) {
    if (startsWithOneOf(word, operandStarts)) {
      operands.push(word);
    } else {
      reduceAll(operators, operands);
      operators.push(word);
    }
  }
  reduceAll(operators, operands);
  return popped(operands);
}

}  // namespace

std::string prepareWithTwoStacks(const std::string& condition) {
  std::string inner = condition;
  if (inner.find('(') == 0) inner.erase(0, 1);
  if (inner.find(')') != std::string::npos) inner.erase(inner.size() - 1);
  std::istringstream words(inner);
  std::string qualified;
  std::string word;
  while (words >> word) qualified += (startsWithOneOf(word, letters) ? "$i/" : "") + word + " ";
  try {
    return reordered(qualified);
  } catch (const std::runtime_error&) {
    return qualified;
  }
}

}  // namespace consolidator
