#include "inspect/explain/ExplainedRun.h"

#include "consolidated/ConsolidatedFile.h"
#include "driver/Driver.h"
#include "inspect/explain/CapturedStream.h"
#include "inspect/explain/ExplainObserver.h"
#include "inspect/explain/Progress.h"
#include "inspect/explain/UntouchedFiles.h"
#include "inspect/records/ConsolidatedInput.h"

#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iostream>
#include <system_error>
#include <variant>

namespace consolidator::inspect {

namespace {

// The inputs that a run names and does not come to.
void addUnreadInputs(Explanation& explanation, const ToolLine& line, const std::string& reason) {
  for (const NamedInput& named : line.inputs()) {
    ExplainedInput& input = explanation.inputs.emplace_back();
    input.kind = named.kind;
    input.path = named.path;
    input.reason = reason;
  }
}

int runAndReport(const ConsolidatorOptions& options, ConsolidatedFile& file) {
  try {
    return runConsolidation(options, file);
  } catch (const std::exception& error) {
    std::cerr << "Error: " << error.what() << std::endl;
    return EXIT_FAILURE;
  }
}

std::string reasonUnread(const Explanation& explanation, const ConsolidatorOptions& options) {
  if (explanation.isUsage) return "the run prints its usage";
  if (options.version()) return "the run prints its version";
  if (explanation.status != 0) return "the run ends before its inputs";
  return "the run dumps a section";
}

// Those of a file that the run itself does not read.
std::vector<consolidated::Section> sectionsOf(const std::string& path) {
  std::error_code error;
  const std::filesystem::path place = std::filesystem::path(".") / path;  // "-" is a name here
  if (!std::filesystem::is_regular_file(place, error)) return {};
  const auto opened = ConsolidatedInput::open(place.string());
  const auto* const input = std::get_if<ConsolidatedInput>(&opened);
  if (input == nullptr) return {};
  const consolidated::Sections sections = input->file().sections();
  return {sections.begin(), sections.end()};
}

// Runs with options that were understood.
void run(Explanation& explanation, const ToolLine& line, ObservedFiles& files) {
  const ConsolidatorOptions& options = line.options();
  Progress progress;
  ExplainObserver observer(explanation, files, progress);
  ConsolidatedFile file(observer, files);
  observer.watch(file.kernels());
  explanation.status = runAndReport(options, file);
  explanation.out = files.dumpedOut();
  explanation.err = files.dumpedErr();
  if (explanation.before.empty()) explanation.before = sectionsOf(options.consolidatedFilePath());
  // A dump saves nothing, even one without a name that reads inputs.
  if (options.dumpRequested() || !files.isOpened()) explanation.after = explanation.before;
  if (explanation.status == 0 && options.dumpRequested() && dumpsOverItself(line)) {
    explanation.after.clear();
    observer.onLoss("dump-over-file", "the dump empties the file that it is to read");
  }
  if (explanation.inputs.empty()) {
    addUnreadInputs(explanation, line, reasonUnread(explanation, options));
  } else {
    observer.finish(!options.logicLocationFiles().empty());
  }
}

}  // namespace

bool dumpsOverItself(const ToolLine& line) {
  std::error_code error;
  return std::filesystem::is_regular_file(line.dumpPath(), error) &&
         std::filesystem::equivalent(line.dumpPath(), line.options().consolidatedFilePath(), error);
}

Explanation observeRun(const ToolLine& line, ObservedFiles& files) {
  Explanation explanation;
  const CapturedStream out(std::cout);
  const CapturedStream err(std::cerr);
  explanation.isUsage = line.isUsage();
  if (line.isParsed()) run(explanation, line, files);
  explanation.out.insert(0, line.printed() + out.text());
  explanation.err.insert(0, err.text());
  return explanation;
}

Explanation explainRun(const std::vector<std::string>& words) {
  UntouchedFiles files;
  return observeRun(ToolLine(words), files);
}

}  // namespace consolidator::inspect
