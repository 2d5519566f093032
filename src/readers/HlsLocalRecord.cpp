#include "readers/HlsLocalRecord.h"

#include "text/LeadingDecimal.h"

#include <cstddef>

namespace consolidator {

namespace {

// The number between the characters at two positions. A missing character is at npos, so the text
// starts at the start of the word or ends at its end; it also ends there when `last` does not come
// after `first`. Odd, but to be kept: "r[3]" has the bounds 3 and 0.
std::uint32_t numberBetween(std::string_view word, std::size_t first, std::size_t last) {
  const std::size_t start = first + 1;
  return static_cast<std::uint32_t>(leadingDecimal(word.substr(start, last - start)));
}

}  // namespace

void HlsLocalRecord::setRegister(std::string_view word) {
  const std::size_t bracket = word.find('[');
  const std::size_t colon = word.find(':');
  const std::size_t end = word.find(']');
  rtlName = word.substr(0, bracket);
  const std::uint32_t high = numberBetween(word, bracket, colon);
  const std::uint32_t low = numberBetween(word, colon, end);
  width = static_cast<std::int32_t>(high - low + 1);
}

}  // namespace consolidator
