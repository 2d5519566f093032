#include "inspect/explain/ConditionWatch.h"

#include "inspect/records/ConditionForm.h"

#include <fmt/format.h>

namespace consolidator::inspect {

namespace {

std::string described(const PreparedCondition& condition) {
  constexpr std::uint32_t sourceLine = 2;
  const std::string place = condition.kind == sourceLine
                                ? fmt::format(" at {}:{}", condition.file, condition.line)
                                : std::string();
  return fmt::format(R"(the condition "{}"{} of kernel "{}")", condition.before, place,
                     condition.kernel);
}

// Two conditions have the same key if they are equal except for what each save changes.
std::string watchedKey(const PreparedCondition& condition, std::string_view form) {
  return fmt::format("{} {} {} {} {}", condition.kind, condition.line, condition.file.size(),
                     condition.file, form);
}

}  // namespace

std::optional<ConditionWatch::Finding> ConditionWatch::look(const PreparedCondition& condition) {
  if (condition.isFirst) seen_.clear();
  if (!condition.after) {
    return Finding{"condition-removed", described(condition) + " always holds and is removed"};
  }
  const std::string form = normalForm(*condition.after);
  if (!seen_.insert(watchedKey(condition, form)).second) {
    return Finding{"duplicate-condition", described(condition) + " is stored twice"};
  }
  if (condition.isStored && normalForm(condition.before) != form) {
    return Finding{"condition-decays",
                   fmt::format("{} becomes \"{}\"", described(condition), *condition.after)};
  }
  return std::nullopt;
}

}  // namespace consolidator::inspect
