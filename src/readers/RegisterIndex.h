#pragma once

#include "lookup/CommonNumbers.h"
#include "lookup/NumbersByText.h"
#include "model/KernelRecord.h"
#include "text/TextFilter.h"
#include "text/TextSearch.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator {

/// Finds the kernels that a register of the design belongs to, in a time that depends on its name
/// and on what is found, not on the number of kernels, instances and registers, unless many kernels
/// share many paths and registers.
class RegisterIndex {
 public:
  /// The instance paths, arguments and variables of the kernels must not change afterwards. No name
  /// that is looked for may be longer than `longestName` bytes, including the "/" in front: longer
  /// paths cannot occur in one, and are left out.
  RegisterIndex(const KernelSequence& kernels, std::size_t longestName);

  /// Returns false only if no argument or variable of any kernel has this register.
  bool mayKnow(std::string_view registerName) const { return filter_.mayHold(registerName); }

  /// What find() returns.
  struct Found {
    std::string_view hardwareName;              ///< the hierarchical name with a "/" in front
    const std::vector<std::uint32_t>& kernels;  ///< by their positions in the list
  };

  /// Finds the kernels that have an argument or a variable whose register is the last part of the
  /// hierarchical name (after its last "/") and an instance path that occurs anywhere in the
  /// hardware name. The result holds until the next call.
  Found find(std::string_view hierarchicalName);

 private:
  void searchKernels();

  NumbersByText registers_;  // noted with the positions of their kernels
  TextFilter filter_;        // of the registers
  NumbersByText paths_;      // noted with the positions of their kernels
  TextSearch pathSearch_;
  CommonNumbers common_;
  std::string hardwareName_;  // of the last search
  std::vector<std::uint32_t> matches_;
};

}  // namespace consolidator
