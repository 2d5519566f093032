#pragma once

#include <memory>
#include <utility>

namespace Devpack {

/// A child element that occurs at most once; it is owned, and copied with its owner.
template <typename T>
class OptionalChild {
 public:
  OptionalChild() = default;
  OptionalChild(OptionalChild&&) noexcept = default;
  OptionalChild& operator=(OptionalChild&&) noexcept = default;
  ~OptionalChild() = default;

  OptionalChild(const OptionalChild& other)
      : child_(other.child_ ? std::make_unique<T>(*other.child_) : nullptr) {}

  OptionalChild& operator=(const OptionalChild& other) {
    OptionalChild copy(other);
    child_.swap(copy.child_);
    return *this;
  }

  /// The child, or null when it is absent.
  const T* get() const { return child_.get(); }

  T* get() { return child_.get(); }

  /// Puts this child in the place of what was there and returns it.
  T& set(T child = T()) {
    child_ = std::make_unique<T>(std::move(child));
    return *child_;
  }

  void clear() { child_.reset(); }

  friend bool operator==(const OptionalChild& a, const OptionalChild& b) {
    return a.child_ && b.child_ ? *a.child_ == *b.child_ : a.child_ == b.child_;
  }

 private:
  std::unique_ptr<T> child_;
};

}  // namespace Devpack
