#pragma once

#include "inspect/explain/Explanation.h"
#include "inspect/explain/Objections.h"
#include "inspect/explain/ToolLine.h"
#include "inspect/output/OutputSink.h"
#include "inspect/output/Status.h"
#include "inspect/run/Replacement.h"
#include "inspect/run/WorkingFiles.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator::inspect {

/// What the user of a safe run wants beyond the run.
struct RunRules {
  StrictRules strict;
  bool keepsEqual = false;  ///< leave a file alone whose new contents would be equal
};

/// What came of a safe run.
struct RunResult {
  Status status = Status::Fails;
  bool isDone = false;
  std::string reason;  ///< why it is not done, or why the file is left alone; may be empty
  std::string
      refusalCode;  ///< of a run that was refused before anything: that of an error document
  std::vector<std::string> messages;  ///< which name files, and may hold texts of them
  std::string summary;                ///< one line, the same; empty where there is none
  Explanation explanation;
};

/// A run of the tool that either does all that its command line says or changes nothing. The tool's
/// own code does the work; it reads the consolidated file where it is, and writes to a new file
/// that takes its place in the end. The new file gets what the tool would have written, since the
/// tool empties the old one before it writes.
class SafeRun {
 public:
  /// What a dump writes to standard output goes to `out`, or to the explanation where that is null.
  /// All must outlive this object.
  SafeRun(const ToolLine& line, const RunRules& rules, OutputSink* out)
      : line_(line), rules_(rules), files_(out) {}

  /// To be called once.
  RunResult run();

 private:
  const std::string& file() const { return line_.options().consolidatedFilePath(); }

  void answer();
  bool refuses();
  void save();
  void dump();
  bool isObjected();
  bool isSound(const Replacement& replacement);
  void place(Replacement& replacement);
  void endDump();
  void failDump(int error);

  void refuse(std::string_view code, const std::string& message);
  void fail(Status status, const std::string& reason);
  void fail(const Replacement::Refusal& refusal);
  void succeed(std::string_view what);
  std::string inputSummary() const;

  const ToolLine& line_;
  const RunRules& rules_;
  WorkingFiles files_;
  RunResult result_;
};

}  // namespace consolidator::inspect
