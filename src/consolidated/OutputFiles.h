#pragma once

#include "consolidated/StdioFile.h"

#include <string>

namespace consolidator {

/// Opens the files that a run writes. A run that must not touch them, or is to write elsewhere, has
/// another one than this.
class OutputFiles {
 public:
  OutputFiles() = default;
  OutputFiles(const OutputFiles&) = delete;
  OutputFiles& operator=(const OutputFiles&) = delete;
  virtual ~OutputFiles() = default;

  /// Opens the consolidated file, which truncates it; none when that fails.
  virtual StdioFile openConsolidatedFile(const std::string& path) = 0;

  /// Opens the file that a section is dumped to, which truncates it; none when that fails.
  virtual StdioFile openDump(const std::string& path) = 0;
};

}  // namespace consolidator
