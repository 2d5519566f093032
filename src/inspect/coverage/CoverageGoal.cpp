#include "inspect/coverage/CoverageGoal.h"

namespace consolidator::inspect {

std::optional<CoverageGoal> CoverageGoal::parse(std::string_view text) {
  VariableKind kind = VariableKind::Variable;
  if (const std::size_t sign = text.find('='); sign != std::string_view::npos) {
    const std::string_view word = text.substr(0, sign);
    if (word != "arguments" && word != "variables") return std::nullopt;
    if (word == "arguments") kind = VariableKind::Argument;
    text.remove_prefix(sign + 1);
  }
  const auto least = Percent::parse(text);
  if (!least) return std::nullopt;
  return CoverageGoal{kind, *least};
}

}  // namespace consolidator::inspect
