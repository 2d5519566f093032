#pragma once

#include "consolidated/File.h"
#include "inspect/diff/Change.h"
#include "inspect/diff/ChangeReport.h"
#include "inspect/diff/KernelWalk.h"

#include <cstdint>

namespace consolidator::inspect {

/// What is compared, and how.
struct ComparisonOptions {
  ConditionMatch match = ConditionMatch::NormalForm;
  bool withSections = false;  ///< the section table and the bytes of all sections, too
};

/// What came out of a comparison.
struct ComparisonResult {
  ComparedFile before;
  ComparedFile after;
  std::uint64_t changes = 0;

  /// Files with the same bytes are equal. Others are only if both are complete, since nobody knows
  /// what is in the rest of one that is not.
  bool isEqual = false;

  bool isComplete() const { return before.whyIncomplete.empty() && after.whyIncomplete.empty(); }
};

/// Compares two files in what the tool reads of them: project, DWARF and kernels.
class FileComparison {
 public:
  FileComparison(const consolidated::File& before, const consolidated::File& after,
                 const ComparisonOptions& options)
      : before_(&before), after_(&after), options_(options) {}

  /// Reports all changes: those of the file itself, then those of the kernels, last the order of
  /// the kernels. Takes linear time each time that it is called, and memory as
  /// KernelListComparison, ListComparison and ConditionComparison say.
  ComparisonResult report(ChangeSink& sink) const;

 private:
  void reportProject(ChangeReport& report) const;
  void reportDwarf(ChangeReport& report) const;
  ComparisonResult resultOfEqualBytes() const;

  const consolidated::File* before_;
  const consolidated::File* after_;
  ComparisonOptions options_;
};

}  // namespace consolidator::inspect
