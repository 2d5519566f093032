#pragma once

#include "inspect/listing/FindQuery.h"
#include "inspect/listing/FindReport.h"
#include "inspect/records/RegisterInstances.h"

#include <cstdint>

namespace consolidator::inspect {

/// Finds in one kernel what a query is about: the kernel by its name; its hardware variables by
/// name, by the name of a variable that they hold, or by location; its arguments and variables by
/// name, by location, or as those that have the register of what is found. Linear in the kernel.
class KernelFinder {
 public:
  /// All of them must stay as long as the finder.
  KernelFinder(const consolidated::Kernel& kernel, const FindQuery& query, FindReport& report)
      : kernel_(kernel), query_(query), report_(report) {}

  /// Reports what is found and returns how much that is. Call it once.
  std::uint64_t find();

 private:
  using Variables = consolidated::List<consolidated::Variable>;

  void addWanted(const Variables& variables);
  void collectFoundRegisters();
  bool isFound(const consolidated::HardwareVariable& hardware) const;
  bool isFound(const consolidated::Variable& variable) const;
  void reportVariables(VariableKind kind, const Variables& variables);
  void reportRegisters();
  void count();

  const consolidated::Kernel& kernel_;
  const FindQuery& query_;
  FindReport& report_;
  TextSet wanted_;  // registers of the variables that bear the name
  TextSet found_;   // registers of the hardware variables that are found
  std::uint64_t count_ = 0;
};

}  // namespace consolidator::inspect
