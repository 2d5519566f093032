#pragma once

#include "inspect/output/OutputSink.h"

#include <string>

namespace consolidator::inspect {

/// An empty file of its own where the system keeps such files, for what needs a file to work on;
/// removed at the end.
class TemporaryFile {
 public:
  TemporaryFile();
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile();

  const std::string& path() const { return path_; }

  /// Writes all that is in the file by now.
  void copyTo(OutputSink& sink);

  /// The system's error number of what failed first, or 0.
  int error() const { return error_; }

 private:
  void note(bool isDone);

  std::string path_;
  int descriptor_ = -1;
  int error_ = 0;
};

}  // namespace consolidator::inspect
