#include "inspect/diff/ListKeys.h"

#include "inspect/diff/ConditionComparison.h"
#include "inspect/diff/ListComparison.h"
#include "inspect/records/KernelItems.h"
#include "inspect/records/SectionItems.h"

#include <fmt/format.h>

#include <string>

namespace consolidator::inspect {

namespace {

using Use = std::function<void(std::string_view)>;
using consolidated::BreakableCondition;
using consolidated::ConditionKind;

std::string conditionKey(const BreakableCondition& condition, ConditionMatch match) {
  std::string place(nameOf(condition.kind()));
  if (condition.kind() == ConditionKind::SourceLine) {
    place += fmt::format(" {}:{}", condition.file().view(), condition.line());
  }
  return fmt::format("{} {}", place, comparedForm(condition, match));
}

template <typename T>
void useKeys(const consolidated::List<T>& list, const Use& use) {
  for (const T& element : list) use(keyOf(element));
}

void useKeys(const ConditionList& list, const Use& use) {
  for (const BreakableCondition& condition : list.conditions) {
    use(conditionKey(condition, list.match));
  }
}

void useKeys(const consolidated::Kernels& kernels, const Use& use) {
  for (const consolidated::Kernel& kernel : kernels) use(kernel.name().view());
}

void useKeys(const consolidated::Sections& sections, const Use& use) {
  for (const consolidated::Section section : sections) use(nameOf(section.kind));
}

}  // namespace

void forEachKey(const KeyList& list, const Use& use) {
  std::visit([&](const auto& elements) { useKeys(elements, use); }, list);
}

}  // namespace consolidator::inspect
