#pragma once

#include "inspect/verify/FindingCode.h"

#include <bitset>
#include <cstddef>

namespace consolidator::inspect {

/// How bad findings are to this user.
class SeverityRules {
 public:
  void countWarningsAsErrors() { areWarningsErrors_ = true; }

  void countAsError(FindingCode code) { errors_.set(static_cast<std::size_t>(code)); }

  Severity operator()(FindingCode code) const {
    const Severity severity = severityOf(code);
    const bool isError = errors_.test(static_cast<std::size_t>(code)) ||
                         (areWarningsErrors_ && severity == Severity::Warning);
    return isError ? Severity::Error : severity;
  }

 private:
  bool areWarningsErrors_ = false;
  std::bitset<findingCodeCount> errors_;
};

}  // namespace consolidator::inspect
