#pragma once

#include "endtoend/ExecutableRun.h"

#include <optional>
#include <string>
#include <vector>

namespace consolidator {

/// What the inspector says beforehand of a run that is about to start: its status and what it
/// prints. Saying so must leave all files in its folder alone.
///
/// Some runs cannot be foretold, and nothing is expected of them then: those that read or write a
/// named pipe, which the inspector would empty, those under another name, and those whose command
/// line has no room for a word more.
class ForetoldRun {
 public:
  /// Asks for the run with these words, its own name first, in a folder.
  ForetoldRun(const std::vector<std::string>& words, const std::string& folder);

  /// Expects that the run ended so.
  void expect(const Outcome& outcome) const;

 private:
  std::string line_;                     // of the command, for messages
  std::optional<std::string> document_;  // its beginning; nothing where nothing was asked
};

}  // namespace consolidator
