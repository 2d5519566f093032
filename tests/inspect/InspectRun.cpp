#include "inspect/InspectRun.h"

#include "inspect/Inspector.h"
#include "support/MemoryFile.h"

#include <cstddef>

namespace consolidator::inspect {

namespace {

std::string replaced(std::string text, std::string_view from, std::string_view to) {
  for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at)) {
    text.replace(at, from.size(), to);
    at += to.size();
  }
  return text;
}

}  // namespace

Outcome inspect(const std::vector<std::string>& words, bool hasColour) {
  const MemoryFile outFile;
  const MemoryFile errFile;
  OutputSink out(outFile.descriptor());
  Messages messages(errFile.descriptor());
  const Status status = runInspector(words, out, messages, hasColour);
  return {static_cast<int>(status), outFile.read(), errFile.read()};
}

Outcome inspectBytes(std::string_view bytes, std::vector<std::string> words) {
  const MemoryFile file;
  file.write(bytes);
  for (std::string& word : words) word = word == "FILE" ? file.path() : word;
  Outcome outcome = inspect(words);
  outcome.out = replaced(std::move(outcome.out), file.path(), "FILE");
  outcome.err = replaced(std::move(outcome.err), file.path(), "FILE");
  return outcome;
}

ExecutableRun startInspect(const std::vector<std::string>& words, const std::string& folder) {
  std::vector<std::string> arguments{"consolidator-inspect"};
  arguments.insert(arguments.end(), words.begin(), words.end());
  return {CONSOLIDATOR_INSPECT_EXECUTABLE, arguments, folder};
}

ExecutableRun startInspectScript(const std::string& script, const std::string& folder) {
  // Processes that the script starts at once would escape a limit that comes from outside.
  const std::string start =
      "ulimit -t " + std::to_string(ExecutableRun::cpuLimit) + "; INSPECT=$0; CONSOLIDATOR=$1; ";
  return {"/bin/bash",
          {"bash", "-c", start + script, CONSOLIDATOR_INSPECT_EXECUTABLE, CONSOLIDATOR_EXECUTABLE},
          folder};
}

}  // namespace consolidator::inspect
