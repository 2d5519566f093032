#pragma once

#include "consolidated/List.h"
#include "inspect/CoverageCounts.h"
#include "inspect/HtmlWriter.h"
#include "inspect/PageParts.h"

#include <cstdint>
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

/// Writes a list under its heading: as a table or, where it is long, as folded blocks of lines,
/// whose cells are separated by tabs. A list without rows is left out.
class PageTable {
 public:
  /// The most lines of a block.
  static constexpr std::uint64_t blockLines = 500;

  /// Begins a list of so many rows; the other objects must outlive this one.
  PageTable(HtmlWriter& html, RowBudget& budget, const PageListKind& kind, std::uint64_t rows);
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
    if (isTable_) {
      html_->add(part, value);
    } else {
      separate();
      html_->text(value);
    }
  }

  void beginLocations();
  void endLocations();
  void separate();
  void beginBlock();
  void endBlock();

  HtmlWriter* html_;
  const PageListKind* kind_;
  std::uint64_t rows_;
  std::uint64_t row_ = 0;
  bool isTable_ = false;
  bool isInBlock_ = false;
  bool isFirstCell_ = true;
};

}  // namespace consolidator::inspect
