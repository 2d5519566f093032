#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace consolidator::inspect {

/// The character that replaces what is no character, U+FFFD, in UTF-8.
inline constexpr std::string_view replacementCharacter = "\xEF\xBF\xBD";

/// What a text begins with: a character in UTF-8, or a maximal ill-formed sequence.
struct Utf8Sequence {
  std::size_t size = 0;    ///< bytes; at least one, unless the text is empty
  char32_t codePoint = 0;  ///< without meaning unless it is well-formed
  bool isWellFormed = false;
};

/// The first sequence of a text. Where no character begins, it is as long as the longest beginning
/// of one that is there, or one byte: what Unicode recommends to replace by one U+FFFD.
Utf8Sequence firstSequence(std::string_view text);

/// Where the first sequence that is no character begins; npos in a text that is UTF-8.
std::size_t findIllFormed(std::string_view text);

/// The text with one U+FFFD for each sequence that is no character.
std::string wellFormed(std::string_view text);

}  // namespace consolidator::inspect
