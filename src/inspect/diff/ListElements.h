#pragma once

#include "consolidated/BreakableCondition.h"
#include "consolidated/Cursor.h"
#include "consolidated/HardwareVariable.h"
#include "consolidated/List.h"
#include "consolidated/Text.h"
#include "consolidated/Variable.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace consolidator::inspect {

/// Where the record of an element begins, in bytes from the start of the file.
inline std::uint64_t recordOffset(const consolidated::Text& text) {
  return text.offset() - sizeof(std::uint32_t);
}

template <typename T>
std::uint64_t recordOffset(const T& element) {
  return element.offset();
}

/// Gives access to any element of a list at once, which the list itself does not: keeps where each
/// of them begins, 8 bytes an element.
template <typename T>
class ListElements {
 public:
  using Iterator = typename consolidated::List<T>::Iterator;

  /// Of the elements of a list from one of them on, in a file with these bytes.
  ListElements(std::string_view bytes, const consolidated::List<T>& list, Iterator from)
      : bytes_(bytes) {
    offsets_.reserve(list.size());
    for (; from != Iterator(); ++from) offsets_.push_back(recordOffset(*from));
  }

  std::size_t size() const { return offsets_.size(); }

  T operator[](std::size_t position) const {
    const consolidated::detail::Cursor start(bytes_, offsets_[position]);
    return *consolidated::List<T>(start, 1).begin();
  }

 private:
  std::string_view bytes_;
  std::vector<std::uint64_t> offsets_;
};

}  // namespace consolidator::inspect
