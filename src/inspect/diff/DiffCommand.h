#pragma once

#include "inspect/command/Command.h"
#include "inspect/diff/FileComparison.h"

#include <string>
#include <string_view>

namespace consolidator::inspect {

/// Tells how two files differ, by kernel and then by item. Status: 0 for equal files, 1 for
/// different ones and wherever a file is not complete. Two files with the same bytes are equal even
/// then, but the status is 1 all the same, as it is of every command on such a file.
class DiffCommand : public Command {
 public:
  void declare(Options& options) override;
  Status run(Console& console) override;

  std::string_view documentFormat() const override { return "consolidator-diff/1"; }

 private:
  // Write what the comparison finds, which is returned.
  ComparisonResult writeText(Console& console, const FileComparison& comparison) const;
  ComparisonResult writeDocument(Console& console, const FileComparison& comparison,
                                 const ConsolidatedInput& before,
                                 const ConsolidatedInput& after) const;

  std::string before_;
  std::string after_;
  bool isExact_ = false;
  bool withSections_ = false;
  bool isSummaryAlone_ = false;
};

}  // namespace consolidator::inspect
