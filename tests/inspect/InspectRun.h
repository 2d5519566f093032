#pragma once

#include "endtoend/ExecutableRun.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace consolidator::inspect {

/// Runs a command of the inspector in this process; the words are those that follow the program's
/// name. Standard input is that of the test program.
Outcome inspect(const std::vector<std::string>& words, bool hasColour = false);

/// Runs a command with a file that holds these bytes; its name stands in for each word "FILE", and
/// "FILE" for its name in what is printed.
Outcome inspectBytes(std::string_view bytes, std::vector<std::string> words);

/// Runs the built executable in a folder.
ExecutableRun startInspect(const std::vector<std::string>& words, const std::string& folder);

/// Runs a script of bash in a folder, in which "$INSPECT" is the built executable of the inspector
/// and "$CONSOLIDATOR" the tool's.
ExecutableRun startInspectScript(const std::string& script, const std::string& folder);

/// The outcome of a run that has nothing to object to.
inline Outcome holds(std::string out) { return {0, std::move(out), {}}; }

/// What the inspector says in one line of a message.
inline std::string said(std::string_view message) {
  return "consolidator-inspect: " + std::string(message) + "\n";
}

}  // namespace consolidator::inspect
