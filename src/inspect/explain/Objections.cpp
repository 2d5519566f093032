#include "inspect/explain/Objections.h"

#include "inspect/explain/ExplainDocument.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <utility>

namespace consolidator::inspect {

namespace {

constexpr std::array<std::string_view, 18> allowableCodes = {
    "skipped",          "refused",          "project-differs",     "version-unsupported",
    "damaged",          "foreign-magic",    "section-unwritten",   "dwarf-differs",
    "locations-differ", "condition-decays", "duplicate-condition", "condition-removed",
    "input-is-file",    "dump-not-written", "dump-empty",          "dump-short",
    "dump-over-file",   "nothing",
};

// Where it is, as compilers name places, then what it came to and why.
Objection objectionTo(const ExplainedInput& input) {
  const std::string code(nameOf(input.outcome));
  std::string message = input.path;
  if (input.line) message += fmt::format(":{}", *input.line);
  message += ": " + (input.outcome == InputOutcome::Nothing ? "gives nothing" : code);
  if (input.reason) message += ": " + *input.reason;
  return {code, message};
}

bool isObjected(const ExplainedInput& input, const StrictRules& rules) {
  const bool givesNothing =
      input.outcome == InputOutcome::Nothing && input.kind != InputKind::RamReport;
  return input.outcome == InputOutcome::Skipped || input.outcome == InputOutcome::Refused ||
         (rules.againstNothing && givesNothing);
}

}  // namespace

bool isAllowable(std::string_view code) {
  return std::ranges::find(allowableCodes, code) != allowableCodes.end();
}

std::vector<Objection> objectionsTo(const Explanation& explanation, const StrictRules& rules,
                                    std::string_view file) {
  std::vector<Objection> objections;
  const auto add = [&](Objection objection) {
    if (std::ranges::find(rules.allowed, objection.code) != rules.allowed.end()) return;
    objections.push_back(std::move(objection));
  };
  for (const ExplainedInput& input : explanation.inputs) {
    if (isObjected(input, rules)) add(objectionTo(input));
  }
  for (const Loss& loss : explanation.losses) {
    add({loss.code, fmt::format("{}: refused: {} [{}]", file, loss.message, loss.code)});
  }
  if (explanation.isUsage) add({"usage", "consolidator answers this command line with its usage"});
  if (explanation.status != 0) {
    const std::string prefix = file.empty() ? std::string() : fmt::format("{}: ", file);
    add({"status", fmt::format("{}consolidator ends with status {}", prefix, explanation.status)});
  }
  return objections;
}

}  // namespace consolidator::inspect
