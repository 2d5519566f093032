#pragma once

#include "inspect/report/SourceText.h"

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <string>

namespace consolidator::inspect {

/// The source files below one folder, by their real paths: a file that is there only by a symbolic
/// link or by ".." is not below it. Keeps what it has read, at most 32 MiB in all.
class SourceFolder {
 public:
  /// A folder that is not there has no files.
  explicit SourceFolder(const std::string& path);

  /// The lines of a regular file below the folder, or null if it is none, cannot be read or is one
  /// too many. A relative path is taken from the folder on. Holds as long as this object.
  const SourceText* linesOf(const std::string& path);

 private:
  std::string realPathOf(const std::string& path) const;  // empty if it is not below the folder
  std::optional<std::string> read(const std::string& realPath) const;

  static constexpr std::size_t mostBytes = std::size_t{32} << 20U;

  std::string folder_;  // with a "/" at its end; empty if it is not there
  std::map<std::string, SourceText, std::less<>> files_;
  std::size_t bytesLeft_ = mostBytes;
};

}  // namespace consolidator::inspect
