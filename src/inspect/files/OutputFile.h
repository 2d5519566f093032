#pragma once

#include "inspect/files/FileBeside.h"
#include "inspect/output/OutputSink.h"

#include <sys/stat.h>

#include <optional>
#include <string>

namespace consolidator::inspect {

/// The file that an option "-o" names. A regular file, or one that is not there yet, is written
/// beside its place and takes it at the end: whatever happens, there is the old file or all of the
/// new one. It keeps its mode and, where the system allows that, its owner; a symbolic link stays
/// one. Anything else, such as a device or a pipe, is written at once.
class OutputFile {
 public:
  /// Opens the file, or waits where the system does. Errors are kept for finish().
  explicit OutputFile(const std::string& path);
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  /// Drops what was not finished: the old file stays.
  ~OutputFile();

  /// Where to write, and nowhere after an error.
  OutputSink& sink() { return *sink_; }

  /// The name of the file beside the place, for those who do not write to the sink; empty where the
  /// file is written at once, or after an error.
  std::string besidePath() const { return beside_ ? beside_->path() : std::string(); }

  /// Ends the file. Returns whether all of it was written and stands in its place.
  bool finish();

  /// The system's error number of what failed first, or 0.
  int error() const { return error_; }

 private:
  void open(const std::string& path);
  void openBeside(const std::string& place, const struct stat* old);
  void keepPermissions(const struct stat& old);
  void note(bool isDone);

  int descriptor_ = -1;  // of a file that is written at once
  int error_ = 0;
  std::optional<FileBeside> beside_;
  std::optional<OutputSink> sink_;
};

}  // namespace consolidator::inspect
