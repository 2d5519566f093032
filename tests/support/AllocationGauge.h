#pragma once

#include <cstddef>

namespace consolidator {

/// Watches what memory is asked for while it lives. One at a time, in one thread.
class AllocationGauge {
 public:
  AllocationGauge();
  AllocationGauge(const AllocationGauge&) = delete;
  AllocationGauge& operator=(const AllocationGauge&) = delete;
  ~AllocationGauge();

  /// Size of the largest single request so far, in bytes.
  std::size_t largest() const { return largest_; }

  /// Sum of all requests so far, in bytes, whether given back since or not.
  std::size_t total() const { return total_; }

  /// Counts a request.
  void note(std::size_t size) const {
    largest_ = size > largest_ ? size : largest_;
    total_ += size;
  }

 private:
  mutable std::size_t largest_ = 0;
  mutable std::size_t total_ = 0;
};

}  // namespace consolidator
