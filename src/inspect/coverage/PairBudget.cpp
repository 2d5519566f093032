#include "inspect/coverage/PairBudget.h"

#include <cstddef>

namespace consolidator::inspect {

namespace {

// How many times the size of a record may be told of it.
constexpr double proportion = 64;

void addVariables(PairTexts& texts, const consolidated::List<consolidated::Variable>& variables) {
  constexpr std::size_t bytesOfNumbers = 16;
  for (const consolidated::Variable& variable : variables) {
    texts.names += 1;
    texts.nameBytes += static_cast<double>(variable.name().stored().size() +
                                           variable.second().stored().size() + bytesOfNumbers);
  }
}

}  // namespace

PairTexts PairTexts::of(const consolidated::Kernel& kernel) {
  PairTexts texts;
  for (const consolidated::Text& path : kernel.instancePaths()) {
    texts.instances += 1;
    texts.paths += static_cast<double>(path.stored().size());
  }
  addVariables(texts, kernel.arguments());
  addVariables(texts, kernel.variables());
  return texts;
}

bool PairBudget::spend(const consolidated::Kernel& kernel, double bytes) {
  const double excess =
      bytes - proportion * static_cast<double>(kernel.endOffset() - kernel.offset());
  if (excess <= 0) return true;
  if (excess > left_) return false;
  left_ -= excess;
  return true;
}

}  // namespace consolidator::inspect
