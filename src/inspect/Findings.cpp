#include "inspect/Findings.h"

#include <algorithm>

namespace consolidator::inspect {

void Findings::add(const Finding& finding) {
  OfCode& found = codes_[static_cast<std::size_t>(finding.code)];
  ++found.count;
  std::vector<Finding>& list = found.list;
  const auto isBefore = [](const Finding& a, const Finding& b) { return a.offset < b.offset; };
  if (list.size() == kept) {
    if (!isBefore(finding, list.back())) return;
    list.pop_back();
  }
  list.insert(std::upper_bound(list.begin(), list.end(), finding, isBefore), finding);
}

}  // namespace consolidator::inspect
