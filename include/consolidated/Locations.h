#pragma once

#include "consolidated/Cursor.h"

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string_view>

namespace consolidated {

/// Where a bit lives in the device: two numbers of a logic-location file, the low 32 bits of its
/// hexadecimal number and the decimal number that follows. (0, 0) may mean that it is not known.
struct Location {
  std::uint32_t first = 0;
  std::uint32_t second = 0;

  friend bool operator==(const Location& a, const Location& b) noexcept {
    return a.first == b.first && a.second == b.second;
  }

  friend bool operator!=(const Location& a, const Location& b) noexcept { return !(a == b); }
};

/// The locations of the bits of a register or variable, by the number of the bit: a view with
/// access to any of them at once.
class Locations {
 public:
  class Iterator;
  using value_type = Location;
  using const_iterator = Iterator;
  using iterator = Iterator;

  /// Bytes of one location in the file.
  static constexpr std::uint32_t width = 8;

  Locations() = default;

  Locations(std::string_view stored, std::uint64_t offset) noexcept
      : stored_(stored), offset_(offset) {}

  /// How many there are, at most 2^32 - 2.
  std::size_t size() const noexcept { return stored_.size() / width; }

  bool empty() const noexcept { return stored_.empty(); }

  /// The location of a bit below size().
  Location operator[](std::size_t bit) const noexcept {
    const char* const place = stored_.data() + bit * width;
    return {detail::u32At(place), detail::u32At(place + width / 2)};
  }

  inline Iterator begin() const noexcept;
  inline Iterator end() const noexcept;

  /// Where the first of them stands, in bytes from the start of the file; their number is the u32
  /// in front of it.
  std::uint64_t offset() const noexcept { return offset_; }

 private:
  std::string_view stored_;
  std::uint64_t offset_ = 0;
};

/// Goes over locations in either direction and by any step. It yields values, which is why C++17
/// counts it among the input iterators.
class Locations::Iterator {
 public:
  using iterator_concept = std::random_access_iterator_tag;
  using iterator_category = std::input_iterator_tag;
  using value_type = Location;
  using difference_type = std::ptrdiff_t;
  using pointer = void;
  using reference = Location;

  Iterator() = default;

  Iterator(const Locations& list, std::size_t bit) noexcept
      : list_(list), bit_(static_cast<difference_type>(bit)) {}

  Location operator*() const noexcept { return list_[static_cast<std::size_t>(bit_)]; }

  Location operator[](difference_type step) const noexcept { return *(*this + step); }

  Iterator& operator+=(difference_type step) noexcept {
    bit_ += step;
    return *this;
  }

  Iterator& operator-=(difference_type step) noexcept { return *this += -step; }

  Iterator& operator++() noexcept { return *this += 1; }

  Iterator& operator--() noexcept { return *this += -1; }

  Iterator operator++(int) noexcept {
    const Iterator before = *this;
    ++*this;
    return before;
  }

  Iterator operator--(int) noexcept {
    const Iterator before = *this;
    --*this;
    return before;
  }

  friend Iterator operator+(Iterator at, difference_type step) noexcept { return at += step; }

  friend Iterator operator+(difference_type step, Iterator at) noexcept { return at += step; }

  friend Iterator operator-(Iterator at, difference_type step) noexcept { return at -= step; }

  friend difference_type operator-(const Iterator& a, const Iterator& b) noexcept {
    return a.bit_ - b.bit_;
  }

  friend bool operator==(const Iterator& a, const Iterator& b) noexcept { return a.bit_ == b.bit_; }

  friend bool operator!=(const Iterator& a, const Iterator& b) noexcept { return a.bit_ != b.bit_; }

  friend bool operator<(const Iterator& a, const Iterator& b) noexcept { return a.bit_ < b.bit_; }

  friend bool operator>(const Iterator& a, const Iterator& b) noexcept { return a.bit_ > b.bit_; }

  friend bool operator<=(const Iterator& a, const Iterator& b) noexcept { return a.bit_ <= b.bit_; }

  friend bool operator>=(const Iterator& a, const Iterator& b) noexcept { return a.bit_ >= b.bit_; }

 private:
  Locations list_;
  difference_type bit_ = 0;
};

inline Locations::Iterator Locations::begin() const noexcept { return {*this, 0}; }

inline Locations::Iterator Locations::end() const noexcept { return {*this, size()}; }

}  // namespace consolidated
