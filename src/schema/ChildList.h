#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <memory>
#include <utility>
#include <vector>

namespace Devpack {

/// The child elements of one name, in document order; they are owned, and copied with their owner.
/// Each keeps its address as long as it is in the list.
template <typename T>
class ChildList {
 public:
  ChildList() = default;
  ChildList(ChildList&&) noexcept = default;
  ChildList& operator=(ChildList&&) noexcept = default;
  ~ChildList() = default;

  ChildList(const ChildList& other) {
    children_.reserve(other.count());
    for (const std::unique_ptr<T>& child : other.children_) append(*child);
  }

  ChildList& operator=(const ChildList& other) {
    ChildList copy(other);
    children_.swap(copy.children_);
    return *this;
  }

  std::size_t count() const { return children_.size(); }

  /// The child at that index, from 0. An index of count() or more stops the program.
  const T& get(std::size_t index) const { return *checked(index); }

  T& get(std::size_t index) { return *checked(index); }

  /// Calls `visit` with each child in turn.
  template <typename Visit>
  void forEach(Visit visit) const {
    for (const std::unique_ptr<T>& child : children_) visit(std::as_const(*child));
  }

  /// Adds an empty child at the end and returns it.
  T& append() { return *children_.emplace_back(std::make_unique<T>()); }

  /// Adds this child at the end and returns it.
  T& append(T child) { return *children_.emplace_back(std::make_unique<T>(std::move(child))); }

  friend bool operator==(const ChildList& a, const ChildList& b) {
    return std::equal(a.children_.begin(), a.children_.end(), b.children_.begin(),
                      b.children_.end(), [](const auto& x, const auto& y) { return *x == *y; });
  }

 private:
  const std::unique_ptr<T>& checked(std::size_t index) const {
    if (index >= children_.size()) std::abort();
    return children_[index];
  }

  std::vector<std::unique_ptr<T>> children_;
};

}  // namespace Devpack
