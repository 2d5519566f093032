#include "inspect/coverage/Percent.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cstddef>

namespace consolidator::inspect {

namespace {

constexpr std::uint32_t wholeTenths = 1000;

bool isDigit(char c) { return c >= '0' && c <= '9'; }

}  // namespace

Percent Percent::of(std::uint64_t part, std::uint64_t whole) {
  if (part == whole) return Percent(wholeTenths);
  if (part == 0) return Percent(0);
  const double share = static_cast<double>(part) / static_cast<double>(whole);
  const auto rounded = (static_cast<std::uint32_t>(share * 2 * wholeTenths) + 1) / 2;
  return Percent(std::clamp(rounded, 1U, wholeTenths - 1));
}

std::optional<Percent> Percent::parse(std::string_view text) {
  std::string digits(text);
  const std::size_t point = text.find('.');
  if (point == std::string_view::npos) {
    digits += '0';
  } else if (point + 2 != text.size()) {
    return std::nullopt;
  } else {
    digits.erase(point, 1);
  }
  if (digits.size() < 2 || digits.size() > 4 ||
      !std::all_of(digits.begin(), digits.end(), isDigit)) {
    return std::nullopt;
  }
  std::uint32_t tenths = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), tenths);
  return tenths <= wholeTenths ? std::optional(Percent(tenths)) : std::nullopt;
}

std::string Percent::text() const { return fmt::format("{}.{}", tenths_ / 10, tenths_ % 10); }

}  // namespace consolidator::inspect
