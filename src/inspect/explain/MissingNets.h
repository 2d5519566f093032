#pragma once

#include "inspect/explain/EditDistance.h"
#include "inspect/explain/Explanation.h"
#include "inspect/explain/InstanceNets.h"
#include "inspect/explain/LetterCounts.h"
#include "model/KernelRecord.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator::inspect {

/// Finds the registers of arguments and variables that have no location in an instance of their
/// kernel, and for each the net that may have been meant: the one inside the instance whose last
/// component is closest to the register, by a third of its length at most; the first of several.
///
/// Lists the first ten thousand; goes on comparing for some seconds at most.
class MissingNets {
 public:
  MissingNets(const KernelList& kernels, InstanceNets& nets) : kernels_(kernels), nets_(nets) {}

  /// Adds what is missing to the explanation.
  void find(Explanation& explanation);

 private:
  struct Name {
    std::string_view leaf;
    std::uint32_t net = 0;
    LetterCounts letters;
  };

  void findInKernel(const KernelRecord& kernel, Explanation& explanation);
  void prepareNames(std::size_t path);
  std::optional<std::string> closest(std::string_view reg, std::size_t path);

  const KernelList& kernels_;
  InstanceNets& nets_;
  EditDistance distance_;
  std::uint64_t looked_ = 0;  // at how many registers
  std::vector<Name> names_;   // of the last instance
  std::optional<std::size_t> namedPath_;
};

}  // namespace consolidator::inspect
