#include "inspect/verify/Findings.h"

#include <algorithm>

namespace consolidator::inspect {

void Findings::add(const Finding& finding) {
  OfCode& found = codes_[static_cast<std::size_t>(finding.code)];
  ++found.count;
  std::vector<Finding>& listed = found.list;
  const auto isBefore = [](const Finding& a, const Finding& b) { return a.offset < b.offset; };
  if (listed.size() == kept) {
    if (!isBefore(finding, listed.back())) return;
    listed.pop_back();
  }
  listed.insert(std::upper_bound(listed.begin(), listed.end(), finding, isBefore), finding);
}

bool Findings::hasError(const SeverityRules& severities) const {
  for (std::size_t i = 0; i < findingCodeCount; ++i) {
    const auto code = static_cast<FindingCode>(i);
    if (count(code) > 0 && severities(code) == Severity::Error) return true;
  }
  return false;
}

}  // namespace consolidator::inspect
