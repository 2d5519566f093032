#include "inspect/output/Utf8.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace consolidator::inspect {

namespace {

// What may follow a leading byte: how many bytes, and between which bounds the first of them lies,
// which excludes overlong forms, surrogates and what is above U+10FFFF.
struct Lead {
  std::size_t following;
  std::uint32_t low;
  std::uint32_t high;
};

Lead leadOf(std::uint32_t byte) {
  if (byte < 0xC2) return {0, 0, 0};
  if (byte < 0xE0) return {1, 0x80, 0xBF};
  if (byte == 0xE0) return {2, 0xA0, 0xBF};
  if (byte == 0xED) return {2, 0x80, 0x9F};
  if (byte < 0xF0) return {2, 0x80, 0xBF};
  if (byte == 0xF0) return {3, 0x90, 0xBF};
  if (byte < 0xF4) return {3, 0x80, 0xBF};
  if (byte == 0xF4) return {3, 0x80, 0x8F};
  return {0, 0, 0};
}

// How many bytes at the start of a text are ASCII, counted in whole words.
std::size_t asciiWords(std::string_view text) {
  std::size_t size = 0;
  for (; size + sizeof(std::uint64_t) <= text.size(); size += sizeof(std::uint64_t)) {
    std::uint64_t word = 0;
    std::memcpy(&word, text.data() + size, sizeof word);
    if ((word & 0x8080'8080'8080'8080U) != 0) break;
  }
  return size;
}

}  // namespace

Utf8Sequence firstSequence(std::string_view text) {
  if (text.empty()) return {};
  const std::uint32_t first = static_cast<unsigned char>(text[0]);
  if (first < 0x80) return {1, first, true};
  const Lead lead = leadOf(first);
  if (lead.following == 0) return {1, 0, false};
  char32_t codePoint = first & (0x3FU >> lead.following);
  for (std::size_t i = 1; i <= lead.following; ++i) {
    const std::uint32_t byte = i < text.size() ? static_cast<unsigned char>(text[i]) : 0;
    const bool fits = i == 1 ? byte >= lead.low && byte <= lead.high : (byte & 0xC0U) == 0x80;
    if (!fits) return {i, 0, false};
    codePoint = codePoint << 6U | (byte & 0x3FU);
  }
  return {lead.following + 1, codePoint, true};
}

std::size_t findIllFormed(std::string_view text) {
  std::size_t position = 0;
  while (true) {
    position += asciiWords(text.substr(position));
    if (position == text.size()) return std::string_view::npos;
    const Utf8Sequence sequence = firstSequence(text.substr(position));
    if (!sequence.isWellFormed) return position;
    position += sequence.size;
  }
}

std::string wellFormed(std::string_view text) {
  std::string result;
  for (std::size_t bad = findIllFormed(text); bad != std::string_view::npos;
       bad = findIllFormed(text)) {
    result.append(text.substr(0, bad)).append(replacementCharacter);
    text.remove_prefix(bad + firstSequence(text.substr(bad)).size);
  }
  return result.append(text);
}

}  // namespace consolidator::inspect
