#pragma once

#include "consolidated/File.h"
#include "consolidated/Kernel.h"
#include "inspect/coverage/PairBudget.h"
#include "inspect/records/BitCoverage.h"
#include "inspect/records/VariableKind.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace consolidator::inspect {

/// A variable or argument that had locations in an instance and has fewer or worse ones now.
struct CoverageLoss {
  std::string_view kernel;
  std::string_view instance;
  VariableKind kind = VariableKind::Argument;
  std::string_view name;
  std::string_view registerName;
  BitCoverage before;
  std::optional<BitCoverage> after;  ///< none where it is gone, maybe with instance or kernel
};

/// Tells which variables of a file have lost locations since an earlier one. Kernels match by name,
/// instances by path, arguments and variables by name; the n-th of a name with the n-th. Doubtful
/// registers do not count.
class CoverageLosses {
 public:
  /// Of two files that stay open.
  CoverageLosses(const consolidated::File& before, const consolidated::File& after)
      : before_(&before), after_(&after) {}

  /// What a comparison came to.
  struct Outcome {
    std::uint64_t losses = 0;
    std::uint64_t notCompared = 0;    ///< kernels with too many pairs (see PairBudget)
    std::string whyBeforeIncomplete;  ///< why not all of the earlier file was compared; or empty
    std::string whyAfterIncomplete;   ///< and of the later one

    bool holds() const {
      return losses == 0 && notCompared == 0 && whyBeforeIncomplete.empty() &&
             whyAfterIncomplete.empty();
    }
  };

  using Take = std::function<void(const CoverageLoss&)>;

  /// Calls `take` for each loss, in the order of the earlier file. Takes a time linear in the
  /// files; holds up to 140 bytes for each kernel of the later one.
  Outcome report(const Take& take) const;

 private:
  const consolidated::File* before_;
  const consolidated::File* after_;
};

}  // namespace consolidator::inspect
