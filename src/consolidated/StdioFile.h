#pragma once

#include <cstdio>
#include <memory>
#include <string>

namespace consolidator {

/// Closes a stdio stream that is owned by a StdioFile.
struct StdioCloser {
  void operator()(std::FILE* stream) const { static_cast<void>(std::fclose(stream)); }
};

/// An owned stdio stream, or none.
using StdioFile = std::unique_ptr<std::FILE, StdioCloser>;

/// Opens a file as `fopen` does; none when that fails.
inline StdioFile openStdioFile(const std::string& path, const char* mode) {
  return StdioFile(std::fopen(path.c_str(), mode));
}

}  // namespace consolidator
