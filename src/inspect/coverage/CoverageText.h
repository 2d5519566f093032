#pragma once

#include "inspect/command/Command.h"
#include "inspect/coverage/CoverageReport.h"

#include <string_view>

namespace consolidator::inspect {

/// Writes what can be debugged for people.
class CoverageText : public CoverageReport {
 public:
  CoverageText(Console& console, LineTableState dwarf) : console_(&console), dwarf_(dwarf) {}

  void add(const CoveredKernel& kernel) override;
  void add(const CoverageSummary& summary) override;
  void beginLosses() override;
  void add(const CoverageLoss& loss) override;
  void endLosses(const CoverageLosses::Outcome& outcome) override;

  void end(bool /*isComplete*/) override {}

 private:
  void writeHeading(std::string_view text) const;
  void writeNames(const CoveredKernel& kernel, VariableKind kind, std::uint32_t instance) const;
  void writeConditions(const ConditionCounts& conditions) const;

  Console* console_;
  LineTableState dwarf_;
};

}  // namespace consolidator::inspect
