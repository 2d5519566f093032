#pragma once

#include "lmx60/ByteSource.h"

namespace lmx {

/// A document in a file, which may be a pipe.
///
/// Opening never waits for the other end of a pipe. That matters to callers that have the same
/// named pipe open already: its writer may be gone, and a second open that waited for a writer
/// would wait for ever, although the bytes are there. For the same reason, a named pipe that nobody
/// writes to reads as empty.
class c_file_source final : public c_byte_source {
 public:
  /// Opens the file for reading in binary. Directories count as files that cannot be opened.
  explicit c_file_source(const char* file_name);
  c_file_source(const c_file_source&) = delete;
  c_file_source& operator=(const c_file_source&) = delete;
  ~c_file_source() override;

  bool is_open() const override { return descriptor_ >= 0; }

  /// Waits for the writer of a pipe. Nothing is read from a file that is not open.
  std::size_t read(char* bytes, std::size_t size) override;

 private:
  int descriptor_;
};

}  // namespace lmx
