#include "inspect/verify/Finding.h"

#include "inspect/output/Utf8.h"

#include <fmt/format.h>

namespace consolidator::inspect {

namespace {

constexpr std::size_t longestName = 256;

// Cuts off what is left of a character whose end was cut off.
void dropPartialCharacter(std::string& text) {
  std::size_t start = text.size();
  while (start > 0 && text.size() - start < 3 && (text[start - 1] & 0xC0) == 0x80) --start;
  if (start == 0) return;
  const std::string_view last = std::string_view(text).substr(start - 1);
  if (!firstSequence(last).isWellFormed) text.resize(start - 1);
}

}  // namespace

std::string sentenceOf(const Finding& finding) {
  return fmt::format(fmt::runtime(sentenceOf(finding.code)), fmt::arg("subject", finding.subject),
                     fmt::arg("number", finding.number));
}

std::string kernelNameOf(const Finding& finding) {
  if (!finding.kernel) return {};
  const std::string_view stored = finding.kernel->stored();
  std::string name(stored.substr(0, longestName));
  const std::size_t zero = name.find('\0');
  if (zero != std::string::npos) {
    name.resize(zero);
  } else if (stored.size() > longestName && stored[longestName] != '\0') {
    dropPartialCharacter(name);
    name += "...";
  }
  return name;
}

}  // namespace consolidator::inspect
