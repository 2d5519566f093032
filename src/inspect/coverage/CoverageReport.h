#pragma once

#include "inspect/coverage/ConditionCounts.h"
#include "inspect/coverage/CoverageLosses.h"
#include "inspect/coverage/CoverageSummary.h"
#include "inspect/coverage/KernelCoverage.h"

namespace consolidator::inspect {

/// What is told of one kernel.
struct CoveredKernel {
  consolidated::Kernel kernel;
  const KernelCoverage& coverage;
  const ConditionCounts& conditions;
  bool listsNames = false;  ///< whether there are few enough pairs to list
};

/// Takes what can be debugged of a file: each kernel, then the summary, then losses since an
/// earlier file.
class CoverageReport {
 public:
  CoverageReport() = default;
  CoverageReport(const CoverageReport&) = delete;
  CoverageReport& operator=(const CoverageReport&) = delete;
  virtual ~CoverageReport() = default;

  virtual void add(const CoveredKernel& kernel) = 0;
  virtual void add(const CoverageSummary& summary) = 0;
  virtual void beginLosses() = 0;
  virtual void add(const CoverageLoss& loss) = 0;
  virtual void endLosses(const CoverageLosses::Outcome& outcome) = 0;
  virtual void end(bool isComplete) = 0;
};

}  // namespace consolidator::inspect
