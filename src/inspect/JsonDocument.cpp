#include "inspect/JsonDocument.h"

#include "inspect/Utf8.h"

#include <rapidjson/internal/itoa.h>

#include <cstddef>
#include <string>

namespace consolidator::inspect {

namespace {

constexpr std::uint64_t largestExact = (std::uint64_t{1} << 53U) - 1;
constexpr std::size_t longestPair = std::string_view(",[4294967295,4294967295]").size();

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
  std::string mended;
  if (findIllFormed(text) != std::string_view::npos) {
    ++lossyTexts_;
    mended = wellFormed(text);
    text = mended;
  }
  return write([&](auto& writer) {
    writer.String(text.empty() ? "" : text.data(), static_cast<rapidjson::SizeType>(text.size()));
  });
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
  compact_.RawValue("", 0,
                    rapidjson::kArrayType);  // what stands between this and what is before it
  out_->put('[');
  bool isFirst = true;
  for (const consolidated::Location location : locations) {
    char* const start = out_->room(longestPair);
    char* end = start;
    if (!isFirst) *end++ = ',';
    isFirst = false;
    *end++ = '[';
    end = rapidjson::internal::u32toa(location.first, end);
    *end++ = ',';
    end = rapidjson::internal::u32toa(location.second, end);
    *end++ = ']';
    out_->advance(static_cast<std::size_t>(end - start));
  }
  out_->put(']');
}

JsonDocument& JsonDocument::null() {
  return write([](auto& writer) { writer.Null(); });
}

void JsonDocument::end() { out_->put('\n'); }

}  // namespace consolidator::inspect
