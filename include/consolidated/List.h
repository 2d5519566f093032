#pragma once

#include "consolidated/Cursor.h"
#include "consolidated/Locations.h"
#include "consolidated/Text.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string_view>

namespace consolidated {

namespace detail {

/// What `operator->` of an iterator that yields values returns.
template <typename T>
struct Arrow {
  T value;

  const T* operator->() const noexcept { return &value; }
};

/// Reads the elements of records. Each overload returns false when the bytes end too early.
struct Decoder {
  static bool read(Cursor& in, Text& text) noexcept {
    std::uint32_t size = 0;
    std::string_view bytes;
    if (!in.readRun(size, bytes, 1)) return false;
    text = {bytes, in.position() - size};
    return true;
  }

  static bool read(Cursor& in, Locations& locations) noexcept {
    std::uint32_t count = 0;
    std::string_view bytes;
    if (!in.readRun(count, bytes, Locations::width)) return false;
    locations = {bytes, in.position() - bytes.size()};
    return true;
  }

  template <typename T>
  static bool read(Cursor& in, T& record) noexcept {
    return record.read(in);
  }
};

}  // namespace detail

/// A list of a kernel record: a view that decodes its elements, which have different lengths, one
/// after another. All of them were found to be there before the list was handed out.
///
/// If the bytes change later, because another process writes to a mapped file, the elements mean
/// nothing, and there may be fewer of them; no byte outside the file is read.
template <typename T>
class List {
 public:
  class Iterator;
  using value_type = T;
  using const_iterator = Iterator;
  using iterator = Iterator;

  List() = default;

  /// Programs get lists from records.
  List(const detail::Cursor& first, std::uint32_t size) noexcept : first_(first), size_(size) {}

  std::uint32_t size() const noexcept { return size_; }

  bool empty() const noexcept { return size_ == 0; }

  Iterator begin() const noexcept { return {first_, size_}; }

  Iterator end() const noexcept { return {}; }

  /// Where the first element stands, in bytes from the start of the file; their number is the u32
  /// in front of it.
  std::uint64_t offset() const noexcept { return first_.position(); }

 private:
  detail::Cursor first_;
  std::uint32_t size_ = 0;
};

/// Goes forward over a list, as often as wanted. It yields values, which is why C++17 counts it
/// among the input iterators. Only iterators of one list compare.
template <typename T>
class List<T>::Iterator {
 public:
  using iterator_concept = std::forward_iterator_tag;
  using iterator_category = std::input_iterator_tag;
  using value_type = T;
  using difference_type = std::ptrdiff_t;
  using pointer = detail::Arrow<T>;
  using reference = T;

  Iterator() = default;

  Iterator(const detail::Cursor& next, std::uint32_t left) noexcept : next_(next), left_(left) {
    readElement();
  }

  T operator*() const noexcept { return element_; }

  detail::Arrow<T> operator->() const noexcept { return {element_}; }

  /// Stays where it is at the end, which may come early when bytes change.
  Iterator& operator++() noexcept {
    if (left_ > 0) --left_;
    readElement();
    return *this;
  }

  Iterator operator++(int) noexcept {
    const Iterator before = *this;
    ++*this;
    return before;
  }

  friend bool operator==(const Iterator& a, const Iterator& b) noexcept {
    return a.left_ == b.left_;
  }

  friend bool operator!=(const Iterator& a, const Iterator& b) noexcept {
    return a.left_ != b.left_;
  }

 private:
  void readElement() noexcept {
    if (left_ > 0 && !detail::Decoder::read(next_, element_)) left_ = 0;
  }

  detail::Cursor next_;
  T element_;
  std::uint32_t left_ = 0;
};

namespace detail {

/// Reads a list whose elements have at least `leastSize` bytes and, so that its end is known, all
/// its elements. A count that needs more bytes than there are fails at once.
template <typename T>
bool readList(Cursor& in, List<T>& list, std::uint32_t leastSize,
              std::uint32_t largestCount = 0xFFFFFFFFU) noexcept {
  const std::uint64_t start = in.position();
  std::uint32_t count = 0;
  if (!in.readU32(count)) return false;
  count = std::min(count, largestCount);
  if (count > in.remaining() / leastSize) return in.failAt(start);
  list = List<T>(in, count);
  T element;
  for (std::uint32_t i = 0; i < count; ++i) {
    if (!Decoder::read(in, element)) return in.failAt(start);
  }
  return true;
}

}  // namespace detail

}  // namespace consolidated
