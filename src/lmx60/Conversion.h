#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace lmx {

/// The largest values of the unsigned integer types of schemas, as text for is_valid_integer().
/// No attribute here has the longer type, but other code relies on its name.
inline constexpr std::string_view max_unsigned_int = "4294967295";
inline constexpr std::string_view max_unsigned_long = "18446744073709551615";

/// Whether the text is one or more decimal digits whose value is at most `max` (itself decimal
/// digits without leading zeros). Leading zeros of any number are allowed; signs and white space
/// are not.
bool is_valid_integer(std::string_view text, std::string_view max);

/// The text of a value, as it stands in a document before escaping.
inline std::string_view vtostring(std::string_view value) { return value; }

std::string vtostring(std::uint32_t value);

/// Where in a document a text goes: that decides what must be escaped.
enum class xml_position { attribute, content };

/// Appends a text to `output` so that reading gives the same text back: `& < > "` become
/// references, and so do the white-space characters that reading would turn into others (CR, in
/// attributes also LF and TAB). The text should be UTF-8 without the control characters that XML
/// cannot hold; such bytes are written as they are.
void output_convert_to_xml(std::string& output, std::string_view text, xml_position position);

/// Turns the text of an attribute into the value of its field; nothing when it does not fit.
struct c_string_converter {
  std::optional<std::string_view> operator()(std::string_view text) const { return text; }
};

struct c_unsigned_int_converter {
  std::optional<std::uint32_t> operator()(std::string_view text) const;
};

}  // namespace lmx
