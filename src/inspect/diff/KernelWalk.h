#pragma once

#include "consolidated/File.h"
#include "consolidated/Kernel.h"
#include "consolidated/Kernels.h"
#include "inspect/records/KernelCounts.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace consolidator::inspect {

/// What was found of one of two files.
struct ComparedFile {
  std::uint64_t kernels = 0;
  KernelCounts counts;  ///< of all kernels

  /// Why not all of the file was compared, as a sentence; empty where all was.
  std::string whyIncomplete;
};

/// Goes over the kernels of a file, which it counts.
class KernelWalk {
 public:
  /// Begins at the first kernel. Notes in `found` what it finds, and at the end a fault.
  KernelWalk(const consolidated::File& file, ComparedFile& found);

  /// Whether there is a kernel; what follows tells of that one.
  bool hasKernel() const { return at_ != consolidated::KernelIterator(); }

  consolidated::Kernel kernel() const { return *at_; }

  std::string_view name() const { return at_->name().view(); }

  const KernelCounts& counts() const { return counts_; }

  void next();

 private:
  void look();

  consolidated::KernelIterator at_;
  KernelCounts counts_;
  ComparedFile* found_;
};

}  // namespace consolidator::inspect
