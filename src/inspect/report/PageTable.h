#pragma once

#include "consolidated/List.h"
#include "inspect/coverage/CoverageCounts.h"
#include "inspect/report/HtmlWriter.h"
#include "inspect/report/PageLines.h"
#include "inspect/report/PageParts.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace consolidator::inspect {

/// What is the same in all lists of one kind.
struct PageListKind {
  std::string_view name;     ///< of one of its rows, for the search
  std::string_view title;    ///< its heading
  std::string_view columns;  ///< in words
  const PagePart<0>* table;  ///< how a table of it begins
};

/// How many rows of tables a page may have in all: browsers take long for more.
class RowBudget {
 public:
  static constexpr std::uint64_t mostRows = 5000;
  static constexpr std::uint64_t mostInTable = 200;

  /// Whether a list of so many rows may be a table, which it is then.
  bool take(std::uint64_t rows) {
    if (rows > mostInTable || rows > left_) return false;
    left_ -= rows;
    return true;
  }

 private:
  std::uint64_t left_ = mostRows;
};

/// Writes a list: under its heading as a table or, where it is long, as folded lines; or, where
/// there are too many kernels to have headings, as lines among those of others.
class PageTable {
 public:
  /// Begins a list of so many rows, which is left out if there are none. The other objects must
  /// outlive this one.
  PageTable(HtmlWriter& html, RowBudget& budget, const PageListKind& kind, std::uint64_t rows);

  /// Begins a list of a kernel among other lines, each of which names its kernel and kind.
  PageTable(HtmlWriter& html, PageLines& lines, const PageListKind& kind, std::string kernel);

  PageTable(const PageTable&) = delete;
  PageTable& operator=(const PageTable&) = delete;

  /// Ends the list.
  ~PageTable();

  void beginRow();
  void endRow();

  /// The cells of a row: the name of what it tells comes first.
  template <typename Text>
  void name(const Text& text) {
    cell(part::nameCell, text);
  }

  template <typename Text>
  void code(const Text& text) {
    cell(part::codeCell, text);
  }

  template <typename Text>
  void text(const Text& text) {
    cell(part::cell, text);
  }

  void number(std::uint64_t number) { cell(part::numberCell, number); }

  /// A cell of how many arguments or variables of an instance are located, with a bar.
  void coverage(const CoverageCounts& counts);

  /// A cell of the locations of one register or, for each instance, those of one variable.
  void locations(const consolidated::Locations& locations);
  void locations(const consolidated::List<consolidated::Locations>& lists);

 private:
  template <typename Value>
  void cell(const PagePart<1>& part, const Value& value) {
    if (lines_ != nullptr) {
      lines_->cell(value);
    } else {
      html_->add(part, value);
    }
  }

  void beginLocations();
  void endLocations();
  std::string titleOfBlock() const;

  HtmlWriter* html_;
  const PageListKind* kind_;
  std::uint64_t rows_ = 0;
  std::string kernel_;            // where the lines are those of several
  std::optional<PageLines> own_;  // in which a long list is
  PageLines* lines_ = nullptr;    // instead of a table
};

}  // namespace consolidator::inspect
