#include "lookup/NumbersByText.h"

#include "lookup/KeyedHash.h"

namespace consolidator {

NumbersByText::NumbersByText(std::span<const Note> notes) {
  std::vector<std::vector<std::uint32_t>> lists;
  for (const auto& [newText, number] : notes) {
    const std::uint64_t hash = keyedHash(newText);
    std::size_t position = positionOf(newText, hash);
    if (position == PositionIndex::none) {
      position = lists.size();
      index_.add(hash, position);
      lists.emplace_back();
      texts_ += newText;
      entries_.push_back({.textStart = static_cast<std::uint32_t>(texts_.size())});
    }
    std::vector<std::uint32_t>& list = lists[position];
    if (list.empty() || list.back() != number) list.push_back(number);
  }
  for (std::size_t i = 0; i < lists.size(); ++i) {
    numbers_.insert(numbers_.end(), lists[i].begin(), lists[i].end());
    entries_[i + 1].numbersStart = static_cast<std::uint32_t>(numbers_.size());
  }
}

std::vector<std::string_view> NumbersByText::texts() const {
  std::vector<std::string_view> texts;
  texts.reserve(size());
  for (std::size_t i = 0; i < size(); ++i) texts.push_back(text(i));
  return texts;
}

std::size_t NumbersByText::positionOf(std::string_view text) const {
  return positionOf(text, keyedHash(text));
}

std::size_t NumbersByText::positionOf(std::string_view wanted, std::uint64_t hash) const {
  return index_.find(hash, [&](std::size_t position) { return text(position) == wanted; });
}

}  // namespace consolidator
