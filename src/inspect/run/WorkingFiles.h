#pragma once

#include "inspect/explain/ObservedFiles.h"
#include "inspect/files/OutputFile.h"
#include "inspect/output/OutputSink.h"
#include "inspect/run/Replacement.h"

#include <cstdint>
#include <optional>
#include <string>

namespace consolidator::inspect {

/// The files of a run that may not leave anything half done: a replacement stands for the
/// consolidated file, and a dump goes beside its place. Unlike the tool, notices every byte that
/// could not be written.
class WorkingFiles final : public ObservedFiles {
 public:
  /// What is dumped to standard output goes there by way of `out`. Where that is null, it is kept
  /// for the explanation, and so is what is dumped to standard error.
  explicit WorkingFiles(OutputSink* out) : out_(out) {}

  /// From now on there is a replacement, which must outlive this object.
  void use(const Replacement& replacement) { replacement_ = &replacement; }

  StdioFile openConsolidatedFile(const std::string& path) override;
  StdioFile openDump(const std::string& path) override;

  /// Inputs that would be are refused before the run.
  bool isEmptied(const std::string& /*path*/) const override { return false; }

  bool isOpened() const override { return isOpened_; }

  const std::string& dumpedOut() const override { return dumpedOut_; }

  const std::string& dumpedErr() const override { return dumpedErr_; }

  /// The system's error number of the first byte of the consolidated file that could not be
  /// written, or 0.
  int writeError() const { return writeError_; }

  /// Whether a dump was begun.
  bool hasDump() const { return hasDump_; }

  /// How many bytes were dumped.
  std::uint64_t dumpedBytes() const;

  /// Gives the dump its name. Returns the system's error number of why not, or 0.
  int finishDump();

  /// The system's error number of a dump that could not be begun, or 0.
  int dumpError() const;

  /// Whether the dump goes to standard output itself.
  bool dumpsToOutput() const { return dumpsToOutput_; }

 private:
  StdioFile openDumpStream(OutputSink* sink, std::string& kept);

  OutputSink* out_;
  const Replacement* replacement_ = nullptr;
  bool isOpened_ = false;
  int writeError_ = 0;
  bool hasDump_ = false;
  bool dumpsToOutput_ = false;
  std::uint64_t dumpedBytes_ = 0;
  std::optional<OutputFile> dump_;
  std::optional<OutputSink> errorSink_;  // of a dump to standard error
  std::string dumpedOut_;
  std::string dumpedErr_;
};

}  // namespace consolidator::inspect
