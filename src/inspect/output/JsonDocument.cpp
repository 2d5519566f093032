#include "inspect/output/JsonDocument.h"

#include "inspect/output/PlainText.h"
#include "inspect/output/Utf8.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <string>

namespace consolidator::inspect {

namespace {

constexpr std::uint64_t largestExact = (std::uint64_t{1} << 53U) - 1;
constexpr std::size_t longestNumber = std::string_view("4294967295").size();
constexpr std::size_t longestPair = std::string_view(",[4294967295,4294967295]").size();

// Whether a byte may begin what cannot stand in a text as it is.
bool isSpecial(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte < 0x20 || byte >= 0x7F || c == '"' || c == '\\';
}

// Whether a character is written as it is. Those that no terminal should get are not.
bool isPlain(char32_t c) { return c != U'"' && c != U'\\' && isShowable(c); }

}  // namespace

JsonDocument::JsonDocument(OutputSink& out, JsonLayout layout)
    : out_(&out), layout_(layout), stream_{&out}, compact_(stream_), pretty_(stream_) {
  pretty_.SetIndent(' ', 2);
}

JsonDocument& JsonDocument::beginObject() {
  return write([](auto& writer) { writer.StartObject(); });
}

JsonDocument& JsonDocument::endObject() {
  return write([](auto& writer) { writer.EndObject(); });
}

JsonDocument& JsonDocument::beginArray() {
  return write([](auto& writer) { writer.StartArray(); });
}

JsonDocument& JsonDocument::endArray() {
  return write([](auto& writer) { writer.EndArray(); });
}

JsonDocument& JsonDocument::key(std::string_view name) {
  return write([&](auto& writer) {
    writer.Key(name.data(), static_cast<rapidjson::SizeType>(name.size()));
  });
}

JsonDocument& JsonDocument::value(std::string_view text) {
  write([](auto& writer) { writer.RawValue("", 0, rapidjson::kStringType); });
  out_->put('"');
  if (!writeCharacters(text)) ++lossyTexts_;
  out_->put('"');
  return *this;
}

// Returns whether all of the text is UTF-8. It may be gigabytes, which the writers would want in
// one piece and mended; and its bytes may change, so that none is looked at twice.
bool JsonDocument::writeCharacters(std::string_view text) {
  bool isWellFormed = true;
  while (true) {
    text.remove_prefix(writePlain(text));
    if (text.empty()) return isWellFormed;
    std::array<char, 4> bytes{};
    const std::size_t count = text.copy(bytes.data(), bytes.size());
    const std::string_view next(bytes.data(), count);
    const Utf8Sequence sequence = firstSequence(next);
    if (!sequence.isWellFormed) {
      out_->write(replacementCharacter);
      isWellFormed = false;
    } else if (isPlain(sequence.codePoint)) {
      out_->write(next.substr(0, sequence.size));
    } else {
      writeEscaped(sequence.codePoint);
    }
    text.remove_prefix(sequence.size);
  }
}

// Writes what begins a text and is written as it is; not all of it where it is long. Returns its
// length.
std::size_t JsonDocument::writePlain(std::string_view text) {
  constexpr std::size_t most = 64;
  char* const room = out_->room(most);
  char* const filled = room + text.copy(room, most);
  const auto size = static_cast<std::size_t>(std::find_if(room, filled, isSpecial) - room);
  out_->advance(size);
  return size;
}

void JsonDocument::writeEscaped(char32_t c) {
  constexpr std::u32string_view named = U"\"\\\b\f\n\r\t";
  constexpr std::string_view letters = "\"\\bfnrt";
  constexpr char32_t largestUnit = 0xFFFF;
  if (const std::size_t i = named.find(c); i != std::u32string_view::npos) {
    out_->put('\\');
    out_->put(letters[i]);
  } else if (c <= largestUnit) {
    writeUnit(c);
  } else {
    const char32_t rest = c - largestUnit - 1;
    writeUnit(0xD800 + (rest >> 10U));
    writeUnit(0xDC00 + (rest & 0x3FFU));
  }
}

// A unit of UTF-16, by its number.
void JsonDocument::writeUnit(char32_t unit) {
  out_->write(fmt::format("\\u{:04X}", static_cast<unsigned>(unit)));
}

JsonDocument& JsonDocument::value(std::uint32_t number) {
  return write([&](auto& writer) { writer.Uint(number); });
}

JsonDocument& JsonDocument::value(std::int32_t number) {
  return write([&](auto& writer) { writer.Int(number); });
}

JsonDocument& JsonDocument::value(std::uint64_t number) {
  if (number > largestExact) return value(std::string_view(std::to_string(number)));
  return write([&](auto& writer) { writer.Uint64(number); });
}

JsonDocument& JsonDocument::decimal(std::string_view digits) {
  return write(
      [&](auto& writer) { writer.RawValue(digits.data(), digits.size(), rapidjson::kNumberType); });
}

JsonDocument& JsonDocument::value(bool isTrue) {
  return write([&](auto& writer) { writer.Bool(isTrue); });
}

JsonDocument& JsonDocument::value(const consolidated::Locations& locations) {
  if (layout_ == JsonLayout::Compact) {
    writeCompact(locations);
    return *this;
  }
  beginArray();
  for (const consolidated::Location location : locations) {
    beginArray().value(location.first).value(location.second).endArray();
  }
  return endArray();
}

// Most of a document are these numbers, which the writer would put character by character.
void JsonDocument::writeCompact(const consolidated::Locations& locations) {
  // What stands between this and what is before it.
  compact_.RawValue("", 0, rapidjson::kArrayType);
  out_->put('[');
  bool isFirst = true;
  for (const consolidated::Location location : locations) {
    char* const start = out_->room(longestPair);
    char* at = start;
    if (!isFirst) *at++ = ',';
    isFirst = false;
    *at++ = '[';
    at = std::to_chars(at, at + longestNumber, location.first).ptr;
    *at++ = ',';
    at = std::to_chars(at, at + longestNumber, location.second).ptr;
    *at++ = ']';
    out_->advance(static_cast<std::size_t>(at - start));
  }
  out_->put(']');
}

JsonDocument& JsonDocument::null() {
  return write([](auto& writer) { writer.Null(); });
}

void JsonDocument::end() { out_->put('\n'); }

}  // namespace consolidator::inspect
