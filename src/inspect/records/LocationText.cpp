#include "inspect/records/LocationText.h"

#include <fmt/format.h>

#include <charconv>
#include <cstdint>
#include <system_error>

namespace consolidator::inspect {

namespace {

std::optional<std::uint32_t> parseNumber(std::string_view text) {
  int base = 10;
  if (text.starts_with("0x") || text.starts_with("0X")) {
    base = 16;
    text.remove_prefix(2);
  }
  std::uint32_t number = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number, base);
  if (error != std::errc() || stop != end) return std::nullopt;
  return number;
}

}  // namespace

std::string textOf(const consolidated::Location& location) {
  return fmt::format("{:#x}:{}", location.first, location.second);
}

std::optional<consolidated::Location> parseLocation(std::string_view text) {
  const std::size_t colon = text.find(':');
  if (colon == std::string_view::npos) return std::nullopt;
  const auto first = parseNumber(text.substr(0, colon));
  const auto second = parseNumber(text.substr(colon + 1));
  if (!first || !second) return std::nullopt;
  return consolidated::Location{*first, *second};
}

}  // namespace consolidator::inspect
