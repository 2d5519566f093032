#pragma once

#include "inspect/verify/Finding.h"
#include "inspect/verify/SeverityRules.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace consolidator::inspect {

/// Collects findings: counts them all and keeps so many of each code, those with the lowest
/// offsets.
class Findings : public FindingSink {
 public:
  /// How many of each code are kept.
  static constexpr std::size_t kept = 20;

  void add(const Finding& finding) override;

  std::uint64_t count(FindingCode code) const { return of(code).count; }

  /// Whether there is an error.
  bool hasError(const SeverityRules& severities) const;

  /// What was kept of a code, by offset; where these are equal, in the order in which they came.
  const std::vector<Finding>& list(FindingCode code) const { return of(code).list; }

 private:
  struct OfCode {
    std::uint64_t count = 0;
    std::vector<Finding> list;
  };

  const OfCode& of(FindingCode code) const { return codes_[static_cast<std::size_t>(code)]; }

  std::array<OfCode, findingCodeCount> codes_;
};

}  // namespace consolidator::inspect
