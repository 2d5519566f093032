#pragma once

#include "consolidated/Kernel.h"
#include "inspect/diff/Change.h"
#include "inspect/diff/ChangeReport.h"

#include <string_view>

namespace consolidator::inspect {

/// Compares kernels of two files that have the same name.
class KernelComparison {
 public:
  /// For files with these bytes, which must be there as long as changes are looked at.
  KernelComparison(std::string_view bytesBefore, std::string_view bytesAfter, ConditionMatch match)
      : bytesBefore_(bytesBefore), bytesAfter_(bytesAfter), match_(match) {}

  /// Reports how two kernels differ. Takes linear time, and next to none where the stored records
  /// are the same.
  void report(const consolidated::Kernel& before, const consolidated::Kernel& after,
              ChangeReport& report) const;

 private:
  bool isStoredAlike(const consolidated::Kernel& before, const consolidated::Kernel& after) const;

  std::string_view bytesBefore_;
  std::string_view bytesAfter_;
  ConditionMatch match_;
};

}  // namespace consolidator::inspect
