#pragma once

#include "consolidated/Cursor.h"

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string_view>

namespace consolidated {

/// What a section holds. Files may hold other numbers, at which reading ends.
enum class SectionKind : std::uint32_t {
  ProjectName = 0,    ///< the name, without terminator
  Dwarf = 1,          ///< the DWARF file, byte for byte
  KernelRecords = 2,  ///< the number of kernels and their records
  Json = 3,           ///< the JSON text of all kernels and a zero byte
};

/// An entry of the section table.
struct Section {
  std::uint32_t index = 0;                      ///< position in the table, counted from 0
  SectionKind kind = SectionKind::ProjectName;  ///< as stored, be it one of the enumerators or not
  std::uint64_t offset = 0;                     ///< as stored
  std::uint32_t size = 0;                       ///< as stored

  /// Where `consolidator` looks for it: the offset cut to signed 32 bits; none where that is
  /// negative.
  std::optional<std::uint32_t> seekOffset() const noexcept {
    const auto low = static_cast<std::uint32_t>(offset);
    return low > 0x7FFFFFFFU ? std::nullopt : std::optional<std::uint32_t>(low);
  }

  /// How long `consolidator` takes it to be: 0xFFFFFFFF stands for 0xFFFFFFFE.
  std::uint32_t clampedSize() const noexcept { return size == 0xFFFFFFFFU ? 0xFFFFFFFEU : size; }

  /// Where its entry stands, in bytes from the start of the file.
  std::uint64_t entryOffset() const noexcept { return 16 + std::uint64_t{24} * index; }
};

/// The section table: a view with access to any entry at once. It has the entries that are there as
/// a whole, however many the header claims.
class Sections {
 public:
  class Iterator;
  using value_type = Section;
  using const_iterator = Iterator;
  using iterator = Iterator;

  /// Bytes of one entry in the file.
  static constexpr std::uint32_t width = 24;

  Sections() = default;

  /// A view of stored entries, without a part of one.
  explicit Sections(std::string_view stored) noexcept : stored_(stored) {}

  std::uint32_t size() const noexcept { return static_cast<std::uint32_t>(stored_.size() / width); }

  bool empty() const noexcept { return stored_.empty(); }

  /// The entry of an index below size().
  Section operator[](std::uint32_t index) const noexcept {
    const char* const entry = stored_.data() + std::size_t{index} * width;
    return {index, static_cast<SectionKind>(detail::u32At(entry)),
            std::uint64_t{detail::u32At(entry + 12)} << 32U | detail::u32At(entry + 8),
            detail::u32At(entry + 16)};
  }

  inline Iterator begin() const noexcept;
  inline Iterator end() const noexcept;

 private:
  std::string_view stored_;
};

/// Goes forward over the entries, as often as wanted. It yields values, which is why C++17 counts
/// it among the input iterators.
class Sections::Iterator {
 public:
  using iterator_concept = std::forward_iterator_tag;
  using iterator_category = std::input_iterator_tag;
  using value_type = Section;
  using difference_type = std::ptrdiff_t;
  using pointer = void;
  using reference = Section;

  Iterator() = default;

  Iterator(const Sections& table, std::uint32_t index) noexcept : table_(table), index_(index) {}

  Section operator*() const noexcept { return table_[index_]; }

  Iterator& operator++() noexcept {
    ++index_;
    return *this;
  }

  Iterator operator++(int) noexcept {
    const Iterator before = *this;
    ++index_;
    return before;
  }

  friend bool operator==(const Iterator& a, const Iterator& b) noexcept {
    return a.index_ == b.index_;
  }

  friend bool operator!=(const Iterator& a, const Iterator& b) noexcept {
    return a.index_ != b.index_;
  }

 private:
  Sections table_;
  std::uint32_t index_ = 0;
};

inline Sections::Iterator Sections::begin() const noexcept { return {*this, 0}; }

inline Sections::Iterator Sections::end() const noexcept { return {*this, size()}; }

}  // namespace consolidated
