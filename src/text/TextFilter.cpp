#include "text/TextFilter.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace consolidator {

namespace {

constexpr std::size_t bitsPerText = 16;
constexpr std::size_t bitsPerWord = 64;

constexpr std::uint64_t maskOf(std::uint64_t bit) {
  return std::uint64_t{1} << (bit % bitsPerWord);
}

}  // namespace

TextFilter::TextFilter(std::size_t textCount) {
  const std::size_t bitCount = std::bit_ceil(std::max(bitsPerText * textCount, bitsPerWord));
  bits_.resize(bitCount / bitsPerWord);
  hashShift_ = 1 + std::countl_zero(std::uint64_t{bitCount});
}

void TextFilter::add(std::string_view text) {
  const std::uint64_t bit = bitOf(text);
  bits_[bit / bitsPerWord] |= maskOf(bit);
}

bool TextFilter::mayHold(std::string_view text) const {
  const std::uint64_t bit = bitOf(text);
  return (bits_[bit / bitsPerWord] & maskOf(bit)) != 0;
}

// Hashes both ends of a text and its length, which tell nearly all names apart.
std::uint64_t TextFilter::bitOf(std::string_view text) const {
  constexpr std::uint64_t multiplier = 0x9E3779B97F4A7C15U;
  std::uint64_t head = 0;
  std::uint64_t tail = 0;
  if (text.size() >= sizeof head) {
    std::memcpy(&head, text.data(), sizeof head);
    std::memcpy(&tail, text.data() + text.size() - sizeof tail, sizeof tail);
  } else {
    for (const char c : text) head = head << 8 | static_cast<unsigned char>(c);
  }
  const std::uint64_t hash = (head + text.size()) * multiplier;
  return ((std::rotl(hash, 32) ^ tail) * multiplier) >> hashShift_;
}

}  // namespace consolidator
