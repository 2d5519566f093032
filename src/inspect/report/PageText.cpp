#include "inspect/report/PageText.h"

#include <fmt/format.h>

namespace consolidator::inspect {

std::string grouped(std::uint64_t number) {
  std::string digits = fmt::format("{}", number);
  for (std::size_t at = digits.size(); at > 3;) {
    at -= 3;
    digits.insert(at, ",");
  }
  return digits;
}

std::string counted(std::uint64_t number, std::string_view noun) {
  return fmt::format("{} {}{}", grouped(number), noun, number == 1 ? "" : "s");
}

std::string_view beginningOf(std::string_view text, std::size_t size) {
  if (text.size() <= size) return text;
  while (size > 0 && (static_cast<unsigned char>(text[size]) & 0xC0U) == 0x80) --size;
  return text.substr(0, size);
}

std::string shortened(std::string_view text) {
  constexpr std::size_t longest = 100;
  std::string beginning(beginningOf(text, longest));
  return text.size() > longest ? beginning + "…" : beginning;
}

}  // namespace consolidator::inspect
