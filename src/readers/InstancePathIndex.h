#pragma once

#include "model/KernelRecord.h"
#include "readers/NumbersByText.h"
#include "readers/TextSearch.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace consolidator {

/// Finds which instance paths of a list of kernels occur in a name, at a cost per name that does
/// not grow with their number. The kernels must outlive the index.
class InstancePathIndex {
 public:
  /// No name that is looked for may be longer than `longestName` bytes: longer paths occur in none,
  /// and are left out.
  InstancePathIndex(const KernelList& kernels, std::size_t longestName);

  /// The kernels that have an instance path which occurs anywhere in the name, in their order, and
  /// each as often as it has such paths. The result holds until the next call.
  const std::vector<const KernelRecord*>& kernelsIn(std::string_view name);

 private:
  std::vector<const KernelRecord*> owners_;  // of each instance, in the order of kernels and paths
  NumbersByText paths_;                      // noted with the numbers of their instances
  TextSearch search_;                        // for the paths
  std::vector<std::uint32_t> foundPaths_;
  std::vector<std::uint32_t> foundInstances_;
  std::vector<const KernelRecord*> foundKernels_;
};

}  // namespace consolidator
