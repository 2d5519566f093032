#include "lmx60/Conversion.h"

#include <algorithm>
#include <charconv>

namespace lmx {

namespace {

// What stands in the document for a character; empty when it stands for itself.
std::string_view reference_for(char c, xml_position position) {
  const bool in_attribute = position == xml_position::attribute;
  switch (c) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '"':
      return "&quot;";
    case '\r':
      return "&#13;";
    case '\n':
      return in_attribute ? "&#10;" : "";
    case '\t':
      return in_attribute ? "&#9;" : "";
    default:
      return "";
  }
}

}  // namespace

bool is_valid_integer(std::string_view text, std::string_view max) {
  const auto is_digit = [](char c) { return c >= '0' && c <= '9'; };
  if (text.empty() || !std::all_of(text.begin(), text.end(), is_digit)) return false;
  text.remove_prefix(std::min(text.find_first_not_of('0'), text.size()));
  return text.size() < max.size() || (text.size() == max.size() && text <= max);
}

std::string vtostring(std::uint32_t value) { return std::to_string(value); }

void output_convert_to_xml(std::string& output, std::string_view text, xml_position position) {
  constexpr std::string_view candidates = "&<>\"\r\n\t";
  std::size_t copied = 0;
  for (std::size_t next = text.find_first_of(candidates); next != std::string_view::npos;
       next = text.find_first_of(candidates, next + 1)) {
    const std::string_view reference = reference_for(text[next], position);
    if (reference.empty()) continue;
    output.append(text, copied, next - copied).append(reference);
    copied = next + 1;
  }
  output.append(text, copied);
}

std::optional<std::uint32_t> c_unsigned_int_converter::operator()(std::string_view text) const {
  if (!is_valid_integer(text, max_unsigned_int)) return std::nullopt;
  std::uint32_t value = 0;
  std::from_chars(text.data(), text.data() + text.size(), value);
  return value;
}

}  // namespace lmx
