#pragma once

#include "observer/RunObserver.h"

#include <optional>
#include <string>
#include <unordered_set>

namespace consolidator::inspect {

/// Says of each condition that a save prepares whether it is lost or damaged by that. To be asked
/// for the conditions of one kernel after the other.
class ConditionWatch {
 public:
  struct Finding {
    std::string code;
    std::string message;
  };

  /// Returns what is wrong with a condition; nothing as a rule.
  std::optional<Finding> look(const PreparedCondition& condition);

 private:
  std::unordered_set<std::string> seen_;  // conditions of the kernel in their normal form
};

}  // namespace consolidator::inspect
