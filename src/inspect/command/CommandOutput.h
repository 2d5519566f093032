#pragma once

#include "inspect/command/Command.h"
#include "inspect/files/OutputFile.h"

#include <optional>
#include <string>

namespace consolidator::inspect {

/// Where a command writes that has an option "-o": a file, or standard output for "-".
class CommandOutput {
 public:
  /// Opens the output; the console must outlive this object.
  CommandOutput(Console& console, const std::string& path);

  OutputSink& sink() { return file_ ? file_->sink() : console_->out; }

  /// Ends the output of a command with this status, and says what went wrong. What was read of a
  /// file that was cut meanwhile replaces no file.
  Status finish(Status status, const ConsolidatedInput& input);

 private:
  Console* console_;
  std::string path_;
  std::optional<OutputFile> file_;  // unless it is standard output
};

}  // namespace consolidator::inspect
