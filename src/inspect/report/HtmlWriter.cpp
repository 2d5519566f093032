#include "inspect/report/HtmlWriter.h"

#include "inspect/output/PlainText.h"
#include "inspect/report/PageText.h"

#include <fmt/format.h>

#include <charconv>
#include <string>

namespace consolidator::inspect {

namespace {

std::string_view escapeOf(char c) {
  switch (c) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '"':
      return "&quot;";
    default:
      return "&#39;";
  }
}

}  // namespace

HtmlWriter& HtmlWriter::text(std::string_view text) {
  if (text.size() <= longestText) {
    escape(plain(text));
  } else {
    escape(plain(beginningOf(text, longestText)));
    out_->write(fmt::format("… ({} bytes)", text.size()));
  }
  return *this;
}

HtmlWriter& HtmlWriter::writeNumber(std::uint64_t number) {
  out_->write(fmt::format("{}", number));
  return *this;
}

HtmlWriter& HtmlWriter::text(const consolidated::Locations& locations) {
  constexpr std::size_t longest = std::string_view(" 0xffffffff:4294967295").size();
  bool isFirst = true;
  std::uint32_t row = 0;
  for (const consolidated::Location location : locations) {
    char* const start = out_->room(longest);
    char* const end = start + longest;
    char* at = start;
    if (!isFirst) *at++ = location.first == row ? ',' : ' ';
    if (isFirst || location.first != row) {
      *at++ = '0';
      *at++ = 'x';
      at = std::to_chars(at, end, location.first, 16).ptr;
      *at++ = ':';
    }
    at = std::to_chars(at, end, location.second).ptr;
    out_->advance(static_cast<std::size_t>(at - start));
    row = location.first;
    isFirst = false;
  }
  return *this;
}

HtmlWriter& HtmlWriter::tab() {
  out_->put('\t');
  return *this;
}

HtmlWriter& HtmlWriter::endLine() {
  out_->put('\n');
  return *this;
}

HtmlWriter& HtmlWriter::add(const PageCode& code) {
  out_->write(code.source);
  return *this;
}

std::string_view HtmlWriter::writeToHole(std::string_view source) {
  const std::size_t hole = findHole(source);
  out_->write(source.substr(0, hole));
  return afterHole(source, hole);
}

void HtmlWriter::escape(std::string_view text) {
  while (true) {
    const std::size_t special = text.find_first_of("&<>\"'");
    out_->write(text.substr(0, special));
    if (special == std::string_view::npos) return;
    out_->write(escapeOf(text[special]));
    text.remove_prefix(special + 1);
  }
}

}  // namespace consolidator::inspect
