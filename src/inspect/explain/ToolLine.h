#pragma once

#include "driver/ConsolidatorOptions.h"
#include "observer/RunObserver.h"

#include <string>
#include <vector>

namespace consolidator::inspect {

/// An input that a command line names.
struct NamedInput {
  InputKind kind;
  std::string path;
};

/// A command line of the tool, understood as the tool does.
class ToolLine {
 public:
  /// Takes the words after the tool's name.
  explicit ToolLine(const std::vector<std::string>& words);

  /// What there is of it, in the order in which a run reads it.
  std::vector<NamedInput> inputs() const;

  const ConsolidatorOptions& options() const { return options_; }

  /// Whether the options could be parsed; if not, a run does no more than printing why.
  bool isParsed() const { return isParsed_; }

  /// Whether a run answers with its usage, an error included.
  bool isUsage() const { return isUsage_; }

  /// Whether a run does more than answering with a text.
  bool isWork() const { return !isUsage_ && !options_.version(); }

  /// What parsing prints on standard output.
  const std::string& printed() const { return printed_; }

  /// Where a run dumps a section to, empty if nowhere.
  const std::string& dumpPath() const;

 private:
  ConsolidatorOptions options_;
  bool isParsed_ = true;
  bool isUsage_ = true;
  std::string printed_;
};

}  // namespace consolidator::inspect
