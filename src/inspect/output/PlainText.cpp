#include "inspect/output/PlainText.h"

#include "inspect/output/Utf8.h"

#include <fmt/format.h>

#include <iterator>

namespace consolidator::inspect {

namespace {

bool isBetween(char32_t c, char32_t first, char32_t last) { return c >= first && c <= last; }

}  // namespace

bool isShowable(char32_t c) {
  return !(c < 0x20 || isBetween(c, 0x7F, 0x9F) || c == 0x061C || isBetween(c, 0x200B, 0x200F) ||
           isBetween(c, 0x2028, 0x202E) || isBetween(c, 0x2060, 0x206F) || c == 0xFEFF ||
           isBetween(c, 0xE0000, 0xE007F));
}

std::string plain(std::string_view stored) {
  const std::string copy(stored);  // the bytes of a file may change between two looks
  std::string_view text = copy;
  std::string shown;
  while (!text.empty()) {
    const Utf8Sequence sequence = firstSequence(text);
    const char32_t c = sequence.codePoint;
    if (!sequence.isWellFormed) {
      shown += replacementCharacter;
    } else if (isShowable(c)) {
      shown += text.substr(0, sequence.size);
    } else if (c < 0x80) {
      fmt::format_to(std::back_inserter(shown), "\\x{:02X}", static_cast<unsigned>(c));
    } else {
      fmt::format_to(std::back_inserter(shown), "\\u{{{:04X}}}", static_cast<unsigned>(c));
    }
    text.remove_prefix(sequence.size);
  }
  return shown;
}

}  // namespace consolidator::inspect
