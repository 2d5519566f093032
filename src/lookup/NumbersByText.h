#pragma once

#include "lookup/PositionIndex.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator {

/// Says which numbers (of kernels, of instances) were noted with a text (a register name, an
/// instance path). Everything lies close together, since a look-up mostly waits for memory.
class NumbersByText {
 public:
  /// In increasing order, each once.
  using Numbers = std::span<const std::uint32_t>;

  struct Note {
    std::string_view text;
    std::uint32_t number = 0;
  };

  /// Takes any number of notes in increasing order of their numbers; the texts must take less than
  /// 4 GiB. Nothing of the notes is referred to later.
  explicit NumbersByText(std::span<const Note> notes);

  NumbersByText(const NumbersByText&) = delete;
  NumbersByText& operator=(const NumbersByText&) = delete;
  ~NumbersByText() = default;

  /// Number of different notes.
  std::size_t noteCount() const { return numbers_.size(); }

  /// Number of different texts.
  std::size_t size() const { return entries_.size() - 1; }

  /// The texts in the order in which they were first noted.
  std::string_view text(std::size_t position) const {
    const std::size_t start = entries_[position].textStart;
    return std::string_view(texts_).substr(start, entries_[position + 1].textStart - start);
  }

  /// All texts, by their positions. The views hold as long as this object.
  std::vector<std::string_view> texts() const;

  /// The numbers noted with the text at this position; at least one.
  Numbers numbers(std::size_t position) const {
    const std::size_t start = entries_[position].numbersStart;
    return Numbers(numbers_).subspan(start, entries_[position + 1].numbersStart - start);
  }

  /// The position of this text; PositionIndex::none if it was not noted.
  std::size_t positionOf(std::string_view text) const;

 private:
  // Texts and numbers of an entry end where those of the next one start.
  struct Entry {
    std::uint32_t textStart = 0;
    std::uint32_t numbersStart = 0;
  };

  std::size_t positionOf(std::string_view wanted, std::uint64_t hash) const;

  std::string texts_;
  std::vector<std::uint32_t> numbers_;
  std::vector<Entry> entries_{Entry()};  // one more than there are texts
  PositionIndex index_;
};

}  // namespace consolidator
