#pragma once

#include "consolidated/BreakableCondition.h"
#include "consolidated/List.h"
#include "inspect/diff/Change.h"
#include "inspect/diff/ChangeReport.h"

#include <string>
#include <string_view>

namespace consolidator::inspect {

/// The condition as it is compared: its normal form, or its text.
std::string comparedForm(const consolidated::BreakableCondition& condition, ConditionMatch match);

/// Reports how the conditions of a kernel differ from those that they became. First those that are
/// equal in kind, file, line and compared form are matched; then, of the others, those with equal
/// kind, file and line, which have changed; each time the n-th with the n-th. Takes linear time;
/// holds up to 60 bytes for each condition after the first one that is not where it was.
class ConditionComparison {
 public:
  using List = consolidated::List<consolidated::BreakableCondition>;

  /// Compares lists of two files with these bytes.
  ConditionComparison(const List& before, std::string_view bytesBefore, const List& after,
                      std::string_view bytesAfter, ConditionMatch match)
      : before_(before),
        bytesBefore_(bytesBefore),
        after_(after),
        bytesAfter_(bytesAfter),
        match_(match) {}

  void report(ChangeReport& report) const;

 private:
  bool isSame(const consolidated::BreakableCondition& before,
              const consolidated::BreakableCondition& after) const;
  void reportRest(List::Iterator before, List::Iterator after, ChangeReport& report) const;

  List before_;
  std::string_view bytesBefore_;
  List after_;
  std::string_view bytesAfter_;
  ConditionMatch match_;
};

}  // namespace consolidator::inspect
