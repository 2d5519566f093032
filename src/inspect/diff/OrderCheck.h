#pragma once

#include <cstddef>

namespace consolidator::inspect {

/// Finds out whether positions rise from one to the next.
class OrderCheck {
 public:
  void add(std::size_t position) {
    isReordered_ = isReordered_ || position < end_;
    end_ = position + 1;
  }

  bool isReordered() const { return isReordered_; }

 private:
  std::size_t end_ = 0;
  bool isReordered_ = false;
};

}  // namespace consolidator::inspect
