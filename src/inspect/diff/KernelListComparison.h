#pragma once

#include "consolidated/File.h"
#include "consolidated/Kernel.h"
#include "inspect/diff/Change.h"
#include "inspect/diff/KernelComparison.h"
#include "inspect/diff/KernelWalk.h"

#include <string_view>
#include <vector>

namespace consolidator::inspect {

/// Compares the kernels of two files, once. They match by name, the n-th of a name with the n-th.
/// Takes linear time; holds up to 140 bytes for each kernel of the second file after the first one
/// that is not where it was.
class KernelListComparison {
 public:
  /// Notes in `foundBefore` and `foundAfter` what the files hold.
  KernelListComparison(const consolidated::File& before, ComparedFile& foundBefore,
                       const consolidated::File& after, ComparedFile& foundAfter,
                       ConditionMatch match);

  /// Reports all changes. A second file whose sections hold the same records again and again, so
  /// that there are far more kernels than its size accounts for, is not read to its end, and is
  /// noted as incomplete.
  void report(ChangeSink& sink);

 private:
  void reportPair(const consolidated::Kernel& before, const consolidated::Kernel& after,
                  ChangeSink& sink) const;
  void reportRest(ChangeSink& sink);
  std::vector<consolidated::Kernel> restAfter();

  const consolidated::File* before_;
  const consolidated::File* after_;
  ComparedFile* foundAfter_;
  KernelWalk walkBefore_;
  KernelWalk walkAfter_;
  KernelComparison comparison_;
};

}  // namespace consolidator::inspect
