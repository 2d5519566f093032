#include "driver/OptionErrorText.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>

namespace po = boost::program_options;

namespace consolidator {

namespace {

// Replaces a placeholder until none is left; returns nothing when that would never end.
std::optional<std::string> replaced(std::string text, std::string_view placeholder,
                                    std::string_view value) {
  constexpr std::size_t longest = std::size_t{1} << 20U;
  std::size_t at = text.find(placeholder);
  if (at == std::string::npos) return text;
  if (value.find(placeholder) != std::string_view::npos) return std::nullopt;
  while (at != std::string::npos) {
    text.replace(at, placeholder.size(), value);
    if (text.size() > longest) return std::nullopt;
    at = text.find(placeholder, at - std::min(at, placeholder.size()));
  }
  return text;
}

// What the library makes of a name in its messages, or the name itself where that would never end.
std::string shown(const std::string& name, const std::string& option) {
  using Replacement = std::pair<std::string_view, std::string_view>;
  const std::array replacements{
      Replacement{"%canonical_option%", name}, Replacement{"%option%", option},
      Replacement{"%original_token%", name}, Replacement{"%prefix%", "--"}};
  std::string text = name;
  for (const auto& [placeholder, value] : replacements) {
    std::optional<std::string> next = replaced(std::move(text), placeholder, value);
    if (!next) return name;
    text = *std::move(next);
  }
  return text;
}

}  // namespace

std::string optionErrorText(po::error_with_option_name& error) {
  constexpr char standIn = '%';  // is no placeholder by itself
  const std::string name = error.get_option_name();
  if (name.find('%') == std::string::npos) return error.what();
  const bool isOption = dynamic_cast<const po::error_with_no_option_name*>(&error) == nullptr;
  error.set_option_name("");
  error.set_original_token({standIn});
  std::string text = error.what();
  return text.replace(text.find(standIn), 1, shown(name, isOption ? name : ""));
}

}  // namespace consolidator
