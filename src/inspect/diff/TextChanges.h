#pragma once

#include "inspect/command/Command.h"
#include "inspect/diff/Change.h"
#include "inspect/diff/FileComparison.h"

#include <string_view>

namespace consolidator::inspect {

/// Writes changes for people: "- " and what was, "+ " and what is, below a heading for each kernel
/// and one for the file itself.
class TextChanges : public ChangeSink {
 public:
  explicit TextChanges(Console& console) : console_(&console) {}

  void take(const Change& change) override;

 private:
  void writeHeading(const Change& change);
  void writeSide(char mark, const Change& change, const ChangeItem& item);

  Console* console_;
  bool hasHeading_ = false;
  const char* headed_ = nullptr;  // where the name in the heading stands in its file
};

/// Writes the summary of a comparison: the counts before and after, then whether the files are
/// equal.
void writeSummary(Console& console, const ComparisonResult& result);

}  // namespace consolidator::inspect
