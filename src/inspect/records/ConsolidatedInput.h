#pragma once

#include "consolidated/File.h"
#include "inspect/records/CutFileGuard.h"

#include <memory>
#include <string>
#include <variant>

namespace consolidator::inspect {

/// Why a file cannot be looked at.
struct InputProblem {
  std::string code;     ///< "cannot-open" or "no-consolidated-file"
  std::string message;  ///< a sentence that begins with the file's name, without line end
  consolidated::Fault fault;
};

/// A consolidated file to look at: a regular file, which is mapped, or a pipe, which is read.
class ConsolidatedInput {
 public:
  /// Opens the file of a name; "-" is standard input. The system's errors, and files that do not
  /// begin as a consolidated file does, are problems.
  static std::variant<ConsolidatedInput, InputProblem> open(const std::string& path);

  const std::string& path() const { return path_; }

  const consolidated::File& file() const { return file_; }

  /// Whether the file was made shorter while it was read, so that what was read there is nothing.
  bool wasCut() const { return guard_->wasCut(); }

 private:
  ConsolidatedInput(std::string path, consolidated::File file, std::unique_ptr<CutFileGuard> guard);

  std::string path_;
  std::unique_ptr<CutFileGuard> guard_;  // longer than what it guards
  consolidated::File file_;
};

}  // namespace consolidator::inspect
