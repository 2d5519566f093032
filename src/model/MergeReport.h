#pragma once

#include "model/KernelRecord.h"
#include "observer/RunObserver.h"

#include <cstddef>
#include <cstdint>

namespace consolidator {

/// Tells an observer what the merge of one record into a known one of its name comes to. Takes time
/// linear in the record.
class MergeReport {
 public:
  /// To be made before the merge: tells what of the record is not taken.
  MergeReport(RunObserver& observer, KernelRecord& known, const KernelRecord& incoming);

  /// To be called after it: tells what the known record got.
  void tellGiven(const KernelRecord& known) const;

 private:
  void tellDropped(KernelRecord& known, const KernelRecord& incoming) const;
  void tellDropped(VariableList& known, const VariableList& incoming, Item what) const;
  void tellHardwareVariables(KernelRecord& known, const KernelRecord& incoming) const;
  void drop(Item what, std::string_view name, std::uint64_t count, std::string_view reason) const;

  RunObserver& observer_;
  std::string_view kernel_;
  KernelType type_;
  std::size_t paths_;
  std::size_t arguments_;
  std::size_t variables_;
  std::size_t hardwareVariables_;
  std::size_t conditions_;
};

/// Tells an observer what a kernel has that was not known before.
void tellNewKernel(RunObserver& observer, const KernelRecord& kernel);

/// The same of several.
void tellNewKernels(RunObserver& observer, const KernelList& kernels);

}  // namespace consolidator
