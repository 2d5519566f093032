#include "inspect/records/ConditionForm.h"

#include "model/ConditionPreparer.h"
#include "text/WhiteSpace.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

namespace consolidator::inspect {

namespace {

// Takes the first word off a text; an empty one where none is left.
std::string_view takeWord(std::string_view& text) {
  const auto* const start = std::find_if_not(text.begin(), text.end(), isWhiteSpace);
  text.remove_prefix(static_cast<std::size_t>(start - text.begin()));
  const std::string_view word = text.substr(0, wordLength(text));
  text.remove_prefix(word.size());
  return word;
}

void append(std::string& form, std::string_view word) {
  if (word.empty()) return;
  if (!form.empty()) form += ' ';
  form += word;
}

using ThreeWords = std::array<std::string_view, 3>;

bool isOperationOfTwo(const ThreeWords& words) {
  return !words.back().empty() && std::count_if(words.begin(), words.end(), isOperand) == 2;
}

// The lesser operand first, around or beside the operator.
void orderOperands(ThreeWords& words) {
  std::string_view& first = isOperand(words[0]) ? words[0] : words[1];
  std::string_view& second = isOperand(words[2]) ? words[2] : words[1];
  if (second < first) std::swap(first, second);
}

}  // namespace

std::string normalForm(std::string_view condition) {
  ThreeWords words;
  for (std::string_view& word : words) word = takeWord(condition);
  std::string_view next = takeWord(condition);
  if (next.empty() && isOperationOfTwo(words)) orderOperands(words);
  std::string form;
  for (const std::string_view word : words) append(form, word);
  for (; !next.empty(); next = takeWord(condition)) append(form, next);
  return form;
}

}  // namespace consolidator::inspect
