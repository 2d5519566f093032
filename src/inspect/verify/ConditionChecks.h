#pragma once

#include "consolidated/Kernel.h"
#include "inspect/verify/Finding.h"
#include "model/ConditionPreparer.h"

#include <string_view>

namespace consolidator::inspect {

/// Whether a condition is one complete expression in prefix form: each operator followed by two
/// operands, which may be such expressions; a lone operand is one, too.
bool isPrefixForm(std::string_view condition);

/// Checks the conditions of one kernel after another.
class ConditionChecks {
 public:
  /// The findings must outlive this object.
  explicit ConditionChecks(FindingSink& findings) : findings_(&findings) {}

  void check(const consolidated::Kernel& kernel);

 private:
  bool decays(std::string_view condition, std::string_view normalForm);

  FindingSink* findings_;
  ConditionPreparer preparer_;
};

}  // namespace consolidator::inspect
