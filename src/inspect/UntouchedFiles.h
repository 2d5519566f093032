#pragma once

#include "consolidated/OutputFiles.h"

#include <sys/types.h>

#include <optional>
#include <string>

namespace consolidator::inspect {

/// Stands for the files that a run would write: says whether they could be opened and takes what is
/// written, without touching any. Only a named pipe is opened, since nothing else tells whether
/// somebody reads it; nothing is written to it.
class UntouchedFiles final : public OutputFiles {
 public:
  StdioFile openConsolidatedFile(const std::string& path) override;
  StdioFile openDump(const std::string& path) override;

  /// Whether the file at this path would be empty by now: it is the consolidated file, which the
  /// run has truncated or created.
  bool isEmptied(const std::string& path) const;

  /// Whether the run has opened the consolidated file for writing.
  bool isOpened() const { return isOpened_; }

  /// What was dumped to standard output or standard error.
  const std::string& dumpedOut() const { return dumpedOut_; }

  const std::string& dumpedErr() const { return dumpedErr_; }

 private:
  struct Place {
    dev_t device = 0;
    ino_t inode = 0;
  };

  bool isOpened_ = false;
  std::optional<Place> existing_;  // of a regular file that would be truncated
  std::string created_;            // where one would be created
  std::string dumpedOut_;
  std::string dumpedErr_;
};

}  // namespace consolidator::inspect
