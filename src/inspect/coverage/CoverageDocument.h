#pragma once

#include "inspect/coverage/CoverageReport.h"
#include "inspect/output/JsonDocument.h"

#include <cstdint>
#include <string_view>

namespace consolidator::inspect {

/// Writes what can be debugged for programs.
class CoverageDocument : public CoverageReport {
 public:
  CoverageDocument(OutputSink& out, std::string_view format, LineTableState dwarf);

  void add(const CoveredKernel& kernel) override;
  void add(const CoverageSummary& summary) override;
  void beginLosses() override;
  void add(const CoverageLoss& loss) override;
  void endLosses(const CoverageLosses::Outcome& outcome) override;
  void end(bool isComplete) override;

 private:
  void writeNames(const CoveredKernel& kernel, VariableKind kind, std::uint32_t instance);
  void writeTotal(const CoverageSummary& summary, VariableKind kind);
  void writeCounts(const CoverageCounts& counts);
  void writeConditions(const ConditionCounts& conditions);
  void writeBits(const BitCoverage& coverage);

  JsonDocument document_;
  LineTableState dwarf_;
  std::uint64_t otherLossyTexts_ = 0;  // written again, or of the file before
};

}  // namespace consolidator::inspect
