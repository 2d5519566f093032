#pragma once

#include <cstddef>
#include <string_view>

namespace consolidator::inspect {

/// A piece of HTML with so many holes, which are to be filled with texts.
template <std::size_t holes>
struct PagePart {
  std::string_view source;
};

/// The style sheet or the script of a page.
struct PageCode {
  std::string_view source;
};

/// Where the first hole ("{name}") begins, or npos.
constexpr std::size_t findHole(std::string_view source) { return source.find('{'); }

/// What follows the hole that begins there.
constexpr std::string_view afterHole(std::string_view source, std::size_t hole) {
  return source.substr(source.find('}', hole) + 1);
}

/// The number of holes in a piece.
constexpr std::size_t holesIn(std::string_view source) {
  std::size_t count = 0;
  for (; findHole(source) != std::string_view::npos; ++count) {
    source = afterHole(source, findHole(source));
  }
  return count;
}

/// Whether what follows this beginning of a piece is outside of tags.
constexpr bool isBetweenTags(std::string_view before) {
  const std::size_t begin = before.rfind('<');
  const std::size_t end = before.rfind('>');
  return begin == std::string_view::npos || (end != std::string_view::npos && end > begin);
}

/// Whether a text that follows this beginning of a piece is in a quoted attribute, one whose value
/// is neither code nor an address outside the page.
constexpr bool isInPlainAttribute(std::string_view before) {
  const std::string_view tag = before.substr(before.rfind('<'));
  std::size_t quotes = 0;
  for (const char c : tag) quotes += c == '"' ? 1 : 0;
  if (quotes % 2 == 0) return false;
  const std::string_view value = tag.substr(tag.rfind('"') + 1);
  const std::string_view head = tag.substr(0, tag.rfind('='));
  const std::string_view name = head.substr(head.rfind(' ') + 1);
  if (name == "href") return value.starts_with('#');
  return !name.starts_with("on") && name != "style" && name != "src" && name != "srcdoc" &&
         name != "action" && name != "formaction";
}

/// Whether the holes of a piece stand where an escaped text is nothing but text, and the piece ends
/// outside of tags. A piece with code has no holes.
constexpr bool isSafePart(std::string_view source) {
  const bool hasCode = source.find("<script") != std::string_view::npos ||
                       source.find("<style") != std::string_view::npos;
  std::string_view rest = source;
  for (std::size_t hole = findHole(rest); hole != std::string_view::npos; hole = findHole(rest)) {
    const std::string_view before = source.substr(0, source.size() - rest.size() + hole);
    if (hasCode || !(isBetweenTags(before) || isInPlainAttribute(before))) return false;
    rest = afterHole(rest, hole);
  }
  return isBetweenTags(source);
}

}  // namespace consolidator::inspect
