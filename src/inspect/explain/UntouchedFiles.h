#pragma once

#include "inspect/explain/ObservedFiles.h"

#include <sys/types.h>

#include <optional>
#include <string>

namespace consolidator::inspect {

/// Stands for the files that a run would write: says whether they could be opened and takes what is
/// written, without touching any. Only a named pipe is opened, since nothing else tells whether
/// somebody reads it; nothing is written to it.
class UntouchedFiles final : public ObservedFiles {
 public:
  StdioFile openConsolidatedFile(const std::string& path) override;
  StdioFile openDump(const std::string& path) override;

  /// It is the consolidated file, which the run has truncated or created by now.
  bool isEmptied(const std::string& path) const override;

  bool isOpened() const override { return isOpened_; }

  const std::string& dumpedOut() const override { return dumpedOut_; }

  const std::string& dumpedErr() const override { return dumpedErr_; }

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
