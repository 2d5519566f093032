#pragma once

#include "consolidated/OutputFiles.h"

#include <string>

namespace consolidator::inspect {

/// The files that an observed run writes. None of them is the one that the run itself would write:
/// that is left alone.
class ObservedFiles : public OutputFiles {
 public:
  /// Whether the run would have emptied or created the file at this path.
  virtual bool isEmptied(const std::string& path) const = 0;

  /// Whether the run has opened the consolidated file for writing.
  virtual bool isOpened() const = 0;

  /// What was dumped to standard output or standard error and is for the explanation.
  virtual const std::string& dumpedOut() const = 0;

  virtual const std::string& dumpedErr() const = 0;
};

}  // namespace consolidator::inspect
