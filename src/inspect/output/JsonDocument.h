#pragma once

#include "consolidated/Locations.h"
#include "inspect/output/OutputSink.h"

#include <rapidjson/prettywriter.h>

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace consolidator::inspect {

/// How a JSON document is laid out.
enum class JsonLayout {
  Compact,  ///< without blanks, on one line
  Pretty,   ///< for people: one value per line
};

/// One strict JSON document (RFC 8259), written while it is made: memory does not grow with it. The
/// caller sees to it that what is begun is ended and that keys and values alternate. Texts may hold
/// any bytes: what is not UTF-8 becomes U+FFFD.
class JsonDocument {
 public:
  explicit JsonDocument(OutputSink& out, JsonLayout layout = JsonLayout::Compact);

  JsonDocument& beginObject();
  JsonDocument& endObject();
  JsonDocument& beginArray();
  JsonDocument& endArray();
  JsonDocument& key(std::string_view name);

  JsonDocument& value(std::string_view text);

  JsonDocument& value(const char* text) { return value(std::string_view(text)); }

  JsonDocument& value(std::uint32_t number);
  JsonDocument& value(std::int32_t number);

  /// A number that every reader of JSON reads exactly: in digits up to 2^53 - 1, above that a
  /// string of these.
  JsonDocument& value(std::uint64_t number);

  JsonDocument& value(bool isTrue);

  /// A number with these digits, a point among them.
  JsonDocument& decimal(std::string_view digits);

  /// A list of lists of two numbers.
  JsonDocument& value(const consolidated::Locations& locations);

  JsonDocument& null();

  /// A key and its value.
  template <typename T>
  JsonDocument& member(std::string_view name, const T& item) {
    return key(name).value(item);
  }

  /// Ends the document with a line end.
  void end();

  /// How many texts were no UTF-8 so far.
  std::uint64_t lossyTexts() const { return lossyTexts_; }

 private:
  // What the writers take for a stream.
  struct Stream {
    using Ch = char;

    // NOLINTNEXTLINE(readability-identifier-naming): called by RapidJSON
    void Put(char c) const { out->put(c); }

    void Flush() {}  // NOLINT(readability-identifier-naming)

    OutputSink* out;
  };

  bool writeCharacters(std::string_view text);
  std::size_t writePlain(std::string_view text);
  void writeEscaped(char32_t c);
  void writeUnit(char32_t unit);
  void writeCompact(const consolidated::Locations& locations);

  template <typename Write>
  JsonDocument& write(Write write) {
    if (layout_ == JsonLayout::Pretty) {
      write(pretty_);
    } else {
      write(compact_);
    }
    return *this;
  }

  OutputSink* out_;
  JsonLayout layout_;
  Stream stream_;
  rapidjson::Writer<Stream> compact_;
  rapidjson::PrettyWriter<Stream> pretty_;
  std::uint64_t lossyTexts_ = 0;
};

}  // namespace consolidator::inspect
