#include "inspect/verify/JsonComparison.h"

#include "inspect/verify/StoredKernel.h"

namespace consolidator::inspect {

JsonComparison::JsonComparison(std::string_view text, Conditions conditions)
    : text_(text), comparison_(text), out_(comparison_.stream()), rendering_(out_) {
  if (conditions == Conditions::PreparedOnceMore) preparer_.emplace();
}

void JsonComparison::add(const consolidated::Kernel& kernel) {
  if (comparison_.isDifferent()) return;
  rendering_.add(StoredKernel(kernel, preparer_ ? &*preparer_ : nullptr));
}

std::optional<std::size_t> JsonComparison::differenceOfAll() {
  rendering_.end();
  const auto difference = differenceOfStart();
  if (difference || comparison_.equalSize() == text_.size()) return difference;
  return comparison_.equalSize();
}

std::optional<std::size_t> JsonComparison::differenceOfStart() {
  out_.flush();
  if (!comparison_.isDifferent()) return std::nullopt;
  return comparison_.equalSize();
}

}  // namespace consolidator::inspect
