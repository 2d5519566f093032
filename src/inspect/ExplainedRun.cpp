#include "inspect/ExplainedRun.h"

#include "consolidated/ConsolidatedFile.h"
#include "driver/ConsolidatorOptions.h"
#include "driver/Driver.h"
#include "inspect/ExplainObserver.h"
#include "inspect/Progress.h"
#include "inspect/UntouchedFiles.h"

#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iostream>
#include <sstream>
#include <system_error>

namespace consolidator::inspect {

namespace {

// Takes what is printed on a standard stream in its lifetime.
class CapturedStream {
 public:
  explicit CapturedStream(std::ostream& stream) : stream_(stream), own_(stream.rdbuf()) {
    stream.rdbuf(text_.rdbuf());
  }

  CapturedStream(const CapturedStream&) = delete;
  CapturedStream& operator=(const CapturedStream&) = delete;

  ~CapturedStream() { stream_.rdbuf(own_); }

  std::string text() const { return text_.str(); }

 private:
  std::ostream& stream_;
  std::streambuf* own_;
  std::ostringstream text_;
};

std::vector<const char*> pointersTo(const std::vector<std::string>& words) {
  std::vector<const char*> pointers{"consolidator"};
  for (const std::string& word : words) pointers.push_back(word.c_str());
  return pointers;
}

void addInputs(Explanation& explanation, InputKind kind, const std::vector<std::string>& paths,
               const std::string& reason) {
  for (const std::string& path : paths) {
    ExplainedInput& input = explanation.inputs.emplace_back();
    input.kind = kind;
    input.path = path;
    input.reason = reason;
  }
}

// The inputs that a run names and does not come to.
void addUnreadInputs(Explanation& explanation, const ConsolidatorOptions& options,
                     const std::string& reason) {
  if (!options.dwarfPath().empty()) {
    addInputs(explanation, InputKind::Dwarf, {options.dwarfPath()}, reason);
  }
  addInputs(explanation, InputKind::Hierarchy, options.hierarchyFiles(), reason);
  addInputs(explanation, InputKind::KernelXml, options.kernelXmlFiles(), reason);
  addInputs(explanation, InputKind::Hls, options.hlsFiles(), reason);
  addInputs(explanation, InputKind::Auxiliary, options.auxiliaryFiles(), reason);
  addInputs(explanation, InputKind::LogicLocations, options.logicLocationFiles(), reason);
  addInputs(explanation, InputKind::RamReport, options.ramReportFiles(), reason);
}

int runAndReport(const ConsolidatorOptions& options, ConsolidatedFile& file) {
  try {
    return runConsolidation(options, file);
  } catch (const std::exception& error) {
    std::cerr << "Error: " << error.what() << std::endl;
    return EXIT_FAILURE;
  }
}

// What the run prints about that, it prints again.
bool printsUsage(const ConsolidatorOptions& options) {
  const CapturedStream discarded(std::cout);
  return options.help() || !options.validate();
}

std::string reasonUnread(const Explanation& explanation, const ConsolidatorOptions& options) {
  if (explanation.isUsage) return "the run prints its usage";
  if (options.version()) return "the run prints its version";
  if (explanation.status != 0) return "the run ends before its inputs";
  return "the run dumps a section";
}

// The file is emptied when it is opened for the dump, before it is read.
bool dumpsOverItself(const ConsolidatorOptions& options) {
  const std::string& dump =
      options.dumpDwarfPath().empty() ? options.dumpJsonPath() : options.dumpDwarfPath();
  std::error_code error;
  return std::filesystem::is_regular_file(dump, error) &&
         std::filesystem::equivalent(dump, options.consolidatedFilePath(), error);
}

// Runs with options that were understood.
void run(Explanation& explanation, const ConsolidatorOptions& options) {
  Progress progress;
  UntouchedFiles files;
  ExplainObserver observer(explanation, files, progress);
  ConsolidatedFile file(observer, files);
  observer.watch(file.kernels());
  explanation.status = runAndReport(options, file);
  explanation.out = files.dumpedOut();
  explanation.err = files.dumpedErr();
  // A dump saves nothing, even one without a name that reads inputs.
  if (options.dumpRequested() || !files.isOpened()) explanation.after = explanation.before;
  if (explanation.status == 0 && options.dumpRequested() && dumpsOverItself(options)) {
    explanation.after.clear();
    observer.onLoss("dump-over-file", "the dump empties the file that it is to read");
  }
  if (explanation.inputs.empty()) {
    addUnreadInputs(explanation, options, reasonUnread(explanation, options));
  } else {
    observer.finish(!options.logicLocationFiles().empty());
  }
}

}  // namespace

Explanation explainRun(const std::vector<std::string>& words) {
  Explanation explanation;
  const std::vector<const char*> pointers = pointersTo(words);
  const CapturedStream out(std::cout);
  const CapturedStream err(std::cerr);
  ConsolidatorOptions options;
  if (const auto error = options.tryParse(static_cast<int>(pointers.size()), pointers.data())) {
    std::cout << *error << std::endl;
    explanation.isUsage = true;
  } else {
    explanation.isUsage = printsUsage(options);
    run(explanation, options);
  }
  explanation.out.insert(0, out.text());
  explanation.err.insert(0, err.text());
  return explanation;
}

}  // namespace consolidator::inspect
