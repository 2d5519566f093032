#pragma once

#include <cstddef>

namespace consolidator {

/// Watches how much memory is asked for at once while it lives, be it allocated or mapped. One at a
/// time, in one thread.
class LargestAllocation {
 public:
  LargestAllocation();
  LargestAllocation(const LargestAllocation&) = delete;
  LargestAllocation& operator=(const LargestAllocation&) = delete;
  ~LargestAllocation();

  /// The largest request so far, in bytes.
  std::size_t bytes() const { return bytes_; }

  /// Takes notice of a request.
  void note(std::size_t size) { bytes_ = size > bytes_ ? size : bytes_; }

 private:
  std::size_t bytes_ = 0;
};

}  // namespace consolidator
