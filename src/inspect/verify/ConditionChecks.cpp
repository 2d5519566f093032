#include "inspect/verify/ConditionChecks.h"

#include "inspect/records/ConditionForm.h"
#include "lookup/HashedSet.h"
#include "lookup/KeyedHash.h"
#include "text/WhiteSpace.h"

#include <algorithm>
#include <cstdint>
#include <string>

namespace consolidator::inspect {

namespace {

using consolidated::BreakableCondition;

// Conditions with the same hash say the same.
std::uint64_t hashOf(const BreakableCondition& condition, std::string_view form) {
  KeyedHash hash(HashSeed::ofProcess());
  hash.add(std::uint64_t{static_cast<std::uint32_t>(condition.kind())} << 32U | condition.line());
  hash.add(condition.file().view());
  hash.add(form);
  return hash.finish();
}

}  // namespace

bool isPrefixForm(std::string_view condition) {
  std::uint64_t missing = 1;  // operands
  const char* const end = condition.data() + condition.size();
  const char* start = std::find_if_not(condition.data(), end, isWhiteSpace);
  while (start != end) {
    if (missing == 0) return false;
    const char* const wordEnd = std::find_if(start, end, isWhiteSpace);
    if (isOperand({start, static_cast<std::size_t>(wordEnd - start)})) {
      --missing;
    } else {
      ++missing;
    }
    start = std::find_if_not(wordEnd, end, isWhiteSpace);
  }
  return missing == 0;
}

void ConditionChecks::check(const consolidated::Kernel& kernel) {
  HashedSet known;
  for (const BreakableCondition& condition : kernel.breakableConditions()) {
    const auto report = [&](FindingCode code) {
      findings_->add({code,
                      kernel.section(),
                      condition.offset(),
                      kernel.name(),
                      {},
                      static_cast<std::uint32_t>(condition.kind())});
    };
    if (condition.kind() > consolidated::ConditionKind::SourceLine) {
      report(FindingCode::UnknownCondition);
    }
    const std::string_view text = condition.condition().view();
    const std::string form = normalForm(text);
    if (!known.add(hashOf(condition, form))) report(FindingCode::DuplicateCondition);
    if (decays(text, form)) report(FindingCode::ConditionDecays);
    if (!isPrefixForm(text)) report(FindingCode::MalformedCondition);
  }
}

bool ConditionChecks::decays(std::string_view condition, std::string_view form) {
  if (isTriviallyTrue(condition)) return true;
  const std::string_view prepared = preparer_.prepare(condition);
  return prepared != condition && normalForm(prepared) != form;
}

}  // namespace consolidator::inspect
