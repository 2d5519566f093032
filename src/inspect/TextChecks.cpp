#include "inspect/TextChecks.h"

#include "inspect/Utf8.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>

namespace consolidator::inspect {

namespace {

bool breaksJson(char c) { return c == '"' || c == '\\' || (c > '\0' && c < ' '); }

constexpr std::uint64_t ofEachByte(std::uint64_t byte) { return byte * 0x0101'0101'0101'0101U; }

// Whether any byte of a word is less than a number of at most 128.
constexpr bool hasByteBelow(std::uint64_t word, std::uint64_t number) {
  return ((word - ofEachByte(number)) & ~word & ofEachByte(0x80)) != 0;
}

// Whether any byte of a word is something to report.
constexpr bool isNotable(std::uint64_t word) {
  return (word & ofEachByte(0x80)) != 0 || hasByteBelow(word, ' ') ||
         hasByteBelow(word ^ ofEachByte('"'), 1) || hasByteBelow(word ^ ofEachByte('\\'), 1);
}

// Whether there is anything to report: hardly any text has such bytes.
bool isNotable(std::string_view text) {
  std::uint64_t word = 0;
  std::size_t position = 0;
  for (; position + sizeof word <= text.size(); position += sizeof word) {
    std::memcpy(&word, text.data() + position, sizeof word);
    if (isNotable(word)) return true;
  }
  word = ofEachByte(' ');
  if (position < text.size()) std::memcpy(&word, text.data() + position, text.size() - position);
  return isNotable(word);
}

}  // namespace

void checkText(const consolidated::Text& text, const TextPlace& place, std::string_view subject,
               FindingSink& findings) {
  const std::string_view stored = text.stored();
  if (!isNotable(stored)) return;
  const auto report = [&](FindingCode code, std::size_t position) {
    if (position >= stored.size()) return;
    findings.add({code, place.section, text.offset() + position, place.kernel, subject});
  };
  report(FindingCode::ZeroByteInText, stored.find('\0'));
  report(FindingCode::TextNotUtf8, findIllFormed(stored));
  if (!place.isInJson) return;
  const auto* const breaking = std::find_if(stored.begin(), stored.end(), breaksJson);
  report(FindingCode::TextBreaksJson, static_cast<std::size_t>(breaking - stored.begin()));
}

}  // namespace consolidator::inspect
