#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace consolidator::inspect {

/// Writes to an open descriptor in large blocks and remembers the first error; what is written
/// after it is dropped. The descriptor stays the caller's, and what flush() did not write is lost
/// with the sink.
class OutputSink {
 public:
  explicit OutputSink(int descriptor);
  OutputSink(const OutputSink&) = delete;
  OutputSink& operator=(const OutputSink&) = delete;
  ~OutputSink() = default;

  void put(char c) {
    if (size_ == block_.size()) writeBlock();
    block_[size_++] = c;
  }

  /// Takes any number of bytes, which may be those of a guarded file that is cut meanwhile.
  void write(std::string_view text);

  /// Room for `size` more bytes, at most the 64 KiB of a block: to be filled from its start and
  /// then taken by advance(). Holds until the next call.
  char* room(std::size_t size) {
    if (block_.size() - size_ < size) writeBlock();
    return block_.data() + size_;
  }

  void advance(std::size_t size) { size_ += size; }

  /// Writes what is held back. Returns whether everything was written so far.
  bool flush();

  /// The system's error number of the first write that failed, or 0. EPIPE is that of a reader who
  /// went away, which nobody needs to be told.
  int error() const { return error_; }

 private:
  void writeBlock();

  int descriptor_;
  int error_ = 0;
  std::vector<char> block_;
  std::size_t size_ = 0;
};

}  // namespace consolidator::inspect
