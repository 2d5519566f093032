#include "inspect/run/ResultCheck.h"

#include "inspect/diff/FileComparison.h"
#include "inspect/records/ConsolidatedInput.h"

#include <fmt/format.h>

#include <variant>

namespace consolidator::inspect {

namespace {

class FirstError : public FindingSink {
 public:
  void add(const Finding& finding) override {
    if (!sentence_.empty() || severityOf(finding.code) != Severity::Error) return;
    sentence_ = fmt::format("{} [{}]", sentenceOf(finding), nameOf(finding.code));
  }

  const std::string& sentence() const { return sentence_; }

 private:
  std::string sentence_;
};

}  // namespace

std::string whyUnsound(const std::string& path, VerificationDepth depth) {
  const auto opened = ConsolidatedInput::open(path);
  if (const auto* const problem = std::get_if<InputProblem>(&opened)) {
    return problem->fault.sentence();
  }
  const auto& input = std::get<ConsolidatedInput>(opened);
  FirstError error;
  Verification(input.file(), error, depth).run({});
  return input.wasCut() ? "it was cut while it was read" : error.sentence();
}

bool areEqual(const std::string& before, const std::string& after) {
  const auto first = ConsolidatedInput::open(before);
  const auto second = ConsolidatedInput::open(after);
  const auto* const a = std::get_if<ConsolidatedInput>(&first);
  const auto* const b = std::get_if<ConsolidatedInput>(&second);
  if (a == nullptr || b == nullptr) return false;
  NoChanges none;
  const ComparisonResult result = FileComparison(a->file(), b->file(), {}).report(none);
  return result.isEqual && result.isComplete() && !a->wasCut() && !b->wasCut();
}

}  // namespace consolidator::inspect
