// What the inspector says beforehand of a run of the tool, on a consolidated file and on inputs of
// every kind; see RunCommand for how they are told apart. Its document must be strict JSON, its
// text plain, and no file may change; status and messages must then be those of the run.

#include "../tests/support/MemoryFile.h"
#include "../tests/support/PlainLogicLocations.h"
#include "../tests/support/StrictJson.h"
#include "Require.h"
#include "RunCommand.h"
#include "RunWorkspace.h"
#include "inspect/Inspector.h"
#include "inspect/output/Utf8.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator {

namespace {

using inspect::Status;

std::vector<std::string> contents(const RunCommand& run) {
  std::vector<std::string> contents{workspace().stored().read()};
  for (std::size_t i = 0; i < run.files.size(); ++i) {
    contents.push_back(workspace().file(i).read());
  }
  return contents;
}

// What the command prints on standard output; nothing on standard error.
std::string explain(const RunCommand& run, const std::vector<std::string>& options, Status worst) {
  std::vector<std::string> words{"explain"};
  words.insert(words.end(), options.begin(), options.end());
  words.emplace_back("--");
  for (const std::string& word : run.arguments()) words.push_back(word);
  const MemoryFile outFile;
  const MemoryFile errFile;
  inspect::OutputSink out(outFile.descriptor());
  inspect::Messages messages(errFile.descriptor());
  const auto before = contents(run);
  require(inspect::runInspector(words, out, messages, false) <= worst, "the question is answered");
  require(contents(run) == before, "no file is touched");
  require(errFile.read().empty(), "nothing is said besides");
  return outFile.read();
}

void requirePlainText(const RunCommand& run) {
  const std::string text = explain(run, {"--strict=nothing"}, Status::Fails);
  const bool isPlain = std::none_of(text.begin(), text.end(), [](char c) {
    return c != '\n' && (static_cast<unsigned char>(c) < 0x20 || c == 0x7F);
  });
  require(isPlain, "texts are plain");
}

std::string_view textOf(const rapidjson::Value& value) {
  return {value.GetString(), value.GetStringLength()};
}

void requireForetold(RunCommand& run) {
  // A pipe would be empty when the run comes.
  for (RunFile& file : run.files) {
    if (file.place == RunFile::Place::Pipe) file.place = RunFile::Place::File;
  }
  Pipes none;
  putInPlace(run, none);
  requirePlainText(run);
  rapidjson::Document document;
  require(jsonFault(explain(run, {"--format=json"}, Status::Holds), document).empty(),
          "the document is strict JSON");
  const ToolOutcome outcome = runTool(run.arguments());
  require(document["status"].GetInt() == outcome.status, "the status is foretold");
  require(textOf(document["stdout"]) == inspect::wellFormed(outcome.out),
          "standard output is foretold");
  require(textOf(document["stderr"]) == inspect::wellFormed(outcome.err),
          "standard error is foretold");
}

}  // namespace

}  // namespace consolidator

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string input(data, data + size);
  if (consolidator::holdsLargeIndex(input)) return 0;
  consolidator::RunCommand run(input);
  consolidator::requireForetold(run);
  return 0;
}
