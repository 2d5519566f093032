#pragma once

#include "consolidated/Locations.h"
#include "consolidated/Text.h"
#include "inspect/output/OutputSink.h"
#include "inspect/report/PagePart.h"

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace consolidator::inspect {

/// Writes HTML that is made of pieces of the page and of texts. Markup comes from the pieces alone:
/// everything else is written as text, whatever bytes it has.
class HtmlWriter {
 public:
  /// The longest text that is written whole, in bytes. Of a longer one its beginning is, and how
  /// long it is.
  static constexpr std::size_t longestText = 4096;

  explicit HtmlWriter(OutputSink& out) : out_(&out) {}

  /// Writes a piece; the values, texts or numbers, fill its holes in their order.
  template <std::size_t holes, typename... Values>
  HtmlWriter& add(const PagePart<holes>& part, const Values&... values) {
    static_assert(sizeof...(values) == holes, "each hole takes a value");
    std::string_view rest = part.source;
    ((rest = writeToHole(rest), text(values)), ...);
    out_->write(rest);
    return *this;
  }

  /// Writes a text of any bytes so that it shows what it is, without control characters.
  HtmlWriter& text(std::string_view text);

  HtmlWriter& text(const char* text) { return this->text(std::string_view(text)); }

  HtmlWriter& text(const consolidated::Text& text) { return this->text(text.view()); }

  template <std::unsigned_integral Number>
  HtmlWriter& text(Number number) {
    return writeNumber(number);
  }

  /// Writes locations in the order of the bits: "0x1a2f:77,78 0x1a30:5"; the first number is left
  /// out where it is that of the bit before.
  HtmlWriter& text(const consolidated::Locations& locations);

  /// What separates texts of preformatted lines: no text has one of these in it.
  HtmlWriter& tab();
  HtmlWriter& endLine();

  /// Writes the style sheet or the script.
  HtmlWriter& add(const PageCode& code);

 private:
  HtmlWriter& writeNumber(std::uint64_t number);
  std::string_view writeToHole(std::string_view source);
  void escape(std::string_view text);

  OutputSink* out_;
};

}  // namespace consolidator::inspect
