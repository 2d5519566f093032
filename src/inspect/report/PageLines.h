#pragma once

#include "inspect/report/HtmlWriter.h"

#include <cstdint>
#include <string_view>

namespace consolidator::inspect {

/// Lines of preformatted text in folded blocks, for what is too much for tables: browsers take no
/// longer for them than for so much text. Tabs separate the cells of a line.
class PageLines {
 public:
  /// The most lines of a block.
  static constexpr std::uint64_t blockLines = 500;

  /// `kind` is what the search calls a line.
  PageLines(HtmlWriter& html, std::string_view kind) : html_(&html), kind_(kind) {}

  PageLines(const PageLines&) = delete;
  PageLines& operator=(const PageLines&) = delete;

  /// Ends the last block.
  ~PageLines();

  /// Begins a line. Of a block that begins with it, `title` is what is seen while it is folded.
  void begin(std::string_view title);

  void end();

  template <typename Value>
  void cell(const Value& value) {
    beginCell();
    html_->text(value);
  }

  /// Begins a cell that the caller writes.
  void beginCell();

  /// How many lines were ended.
  std::uint64_t count() const { return count_; }

 private:
  HtmlWriter* html_;
  std::string_view kind_;
  std::uint64_t count_ = 0;
  bool isFirstCell_ = true;
};

}  // namespace consolidator::inspect
