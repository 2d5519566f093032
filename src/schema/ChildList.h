#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <utility>
#include <vector>

namespace Devpack {

/// The child elements of one name, in document order; they are owned, and copied with their owner.
/// Each keeps its address as long as it is in the list. Most lists are empty, nearly all in
/// documents with many elements; an empty one takes one pointer.
template <typename T>
class ChildList {
 public:
  ChildList() = default;
  ChildList(ChildList&&) noexcept = default;
  ChildList& operator=(ChildList&&) noexcept = default;
  ~ChildList() = default;

  ChildList(const ChildList& other) {
    other.forEach([this](const T& child) { take(std::make_unique<T>(child)); });
  }

  ChildList& operator=(const ChildList& other) {
    ChildList copy(other);
    children_.swap(copy.children_);
    return *this;
  }

  std::size_t count() const { return children_ ? children_->size() : 0; }

  /// The child at that index, from 0. An index of count() or more stops the program.
  const T& get(std::size_t index) const { return *checked(index); }

  T& get(std::size_t index) { return *checked(index); }

  /// Calls `visit` with each child in turn.
  template <typename Visit>
  void forEach(Visit visit) const {
    for (std::size_t i = 0; i < count(); ++i) visit(get(i));
  }

  /// Adds an empty child at the end and returns it.
  T& append() { return take(std::make_unique<T>()); }

  friend bool operator==(const ChildList& a, const ChildList& b) {
    if (a.count() != b.count()) return false;
    for (std::size_t i = 0; i < a.count(); ++i) {
      if (!(a.get(i) == b.get(i))) return false;
    }
    return true;
  }

 private:
  T& take(std::unique_ptr<T> child) {
    if (!children_) children_ = std::make_unique<std::vector<std::unique_ptr<T>>>();
    children_->push_back(std::move(child));
    return *children_->back();
  }

  const std::unique_ptr<T>& checked(std::size_t index) const {
    if (index >= count()) std::abort();
    return (*children_)[index];
  }

  std::unique_ptr<std::vector<std::unique_ptr<T>>> children_;
};

}  // namespace Devpack
