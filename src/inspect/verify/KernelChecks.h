#pragma once

#include "consolidated/Kernel.h"
#include "inspect/verify/ConditionChecks.h"
#include "inspect/verify/Finding.h"
#include "lookup/HashedSet.h"

#include <cstdint>
#include <string_view>

namespace consolidator::inspect {

struct TextPlace;

/// Checks one kernel after another, and counts what they hold. Remembers 16 bytes of each name.
class KernelChecks {
 public:
  /// The findings must outlive this object.
  explicit KernelChecks(FindingSink& findings) : findings_(&findings), conditions_(findings) {}

  void check(const consolidated::Kernel& kernel);

  bool hasKernels() const { return kernels_ > 0; }

  bool hasInstances() const { return hasInstances_; }

  bool hasLocations() const { return hasLocations_; }

  /// Whether what the kernels render to is strict JSON: their texts do not break it, and no
  /// argument or variable has bits, which are rendered in a form of their own.
  bool renderStrictly() const { return renderStrictly_; }

 private:
  void checkRecord(const consolidated::Kernel& kernel);
  void checkTexts(const consolidated::Kernel& kernel);
  void checkLocations(const consolidated::Kernel& kernel);
  void checkBits(const consolidated::Kernel& kernel, const consolidated::Variable& variable,
                 std::string_view subject);
  void checkLocations(const consolidated::Kernel& kernel, const consolidated::Locations& locations,
                      std::string_view subject);

  FindingSink* findings_;
  ConditionChecks conditions_;
  HashedSet names_;
  std::uint64_t kernels_ = 0;
  bool hasInstances_ = false;
  bool hasLocations_ = false;
  bool renderStrictly_ = true;
};

}  // namespace consolidator::inspect
