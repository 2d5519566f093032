#include "inspect/JsonDocument.h"

#include "inspect/Utf8.h"

#include <string>

namespace consolidator::inspect {

namespace {

constexpr std::uint64_t largestExact = (std::uint64_t{1} << 53U) - 1;

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

JsonDocument& JsonDocument::null() {
  return write([](auto& writer) { writer.Null(); });
}

void JsonDocument::end() { out_->put('\n'); }

}  // namespace consolidator::inspect
