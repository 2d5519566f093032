#pragma once

#include "consolidated/File.h"
#include "inspect/coverage/CoverageCounts.h"
#include "inspect/records/KernelCounts.h"
#include "inspect/report/InstanceTree.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace consolidator::inspect {

/// What must be known of all kernels before the first of them is written. Memory does not grow with
/// their number.
struct FileSurvey {
  static constexpr std::size_t mostNames = 200;

  /// Walks all kernels of a file.
  explicit FileSurvey(const consolidated::File& file);

  std::uint64_t kernels = 0;
  KernelCounts counts;
  CoverageCounts coverage;                   ///< of all pairs of a name and an instance
  std::vector<std::string> names;            ///< of the first kernels, shortened
  InstanceTree tree;                         ///< of the first instances
  std::optional<consolidated::Fault> fault;  ///< that ends the reading early

 private:
  void add(const consolidated::Kernel& kernel);
};

}  // namespace consolidator::inspect
