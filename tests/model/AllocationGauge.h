#pragma once

#include <cstddef>

namespace consolidator {

/// Watches what is asked of `operator new` while it lives. One gauge at a time, one thread.
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

  /// Counts one request.
  void note(std::size_t size);

 private:
  std::size_t largest_ = 0;
  std::size_t total_ = 0;
};

}  // namespace consolidator
