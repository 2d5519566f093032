#pragma once

#include "inspect/command/Command.h"
#include "inspect/coverage/CoverageReport.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator::inspect {

/// Tells what of a file can be debugged: which arguments and variables have locations in which
/// instance, and which conditions a debugger can use.
class CoverageCommand : public Command {
 public:
  void declare(Options& options) override;
  Status run(Console& console) override;

  std::string_view documentFormat() const override { return "consolidator-coverage/1"; }

 private:
  std::unique_ptr<CoverageReport> makeReport(Console& console, LineTableState dwarf) const;
  Status answer(Console& console, const ConsolidatedInput& input,
                const std::optional<ConsolidatedInput>& baseline) const;
  bool reachesGoals(Console& console, const CoverageSummary& summary) const;

  std::string path_;
  std::optional<std::string> baseline_;
  std::vector<std::string> goals_;
};

}  // namespace consolidator::inspect
