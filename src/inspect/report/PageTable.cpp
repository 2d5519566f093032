#include "inspect/report/PageTable.h"

#include "inspect/report/CoverageBar.h"
#include "inspect/report/PageText.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

namespace consolidator::inspect {

PageTable::PageTable(HtmlWriter& html, RowBudget& budget, const PageListKind& kind,
                     std::uint64_t rows)
    : html_(&html), kind_(&kind), rows_(rows) {
  if (rows == 0) return;
  html.add(part::listTitle, kind.title, grouped(rows));
  if (budget.take(rows)) {
    html.add(*kind.table);
  } else {
    html.add(part::folded, kind.columns, PageLines::blockLines);
    lines_ = &own_.emplace(html, kind.name);
  }
}

PageTable::PageTable(HtmlWriter& html, PageLines& lines, const PageListKind& kind,
                     std::string kernel)
    : html_(&html), kind_(&kind), kernel_(std::move(kernel)), lines_(&lines) {}

PageTable::~PageTable() {
  if (rows_ > 0 && lines_ == nullptr) html_->add(part::tableEnd);
}

void PageTable::beginRow() {
  if (lines_ == nullptr) {
    html_->add(part::rowBegin, kind_->name);
    return;
  }
  lines_->begin(titleOfBlock());
  if (own_) return;
  lines_->cell(kernel_);
  lines_->cell(kind_->name);
}

void PageTable::endRow() {
  if (lines_ != nullptr) {
    lines_->end();
  } else {
    html_->add(part::rowEnd);
  }
}

void PageTable::coverage(const CoverageCounts& counts) {
  if (lines_ != nullptr) {
    lines_->cell(wordsOf(counts));
  } else {
    writeCoverageBar(*html_, counts);
  }
}

void PageTable::locations(const consolidated::Locations& locations) {
  beginLocations();
  html_->text(locations);
  endLocations();
}

void PageTable::locations(const consolidated::List<consolidated::Locations>& lists) {
  beginLocations();
  bool isFirst = true;
  for (const consolidated::Locations& bits : lists) {
    if (!isFirst) html_->text("; ");
    isFirst = false;
    html_->text(bits);
  }
  endLocations();
}

void PageTable::beginLocations() {
  if (lines_ != nullptr) {
    lines_->beginCell();
  } else {
    html_->add(part::locationsBegin);
  }
}

void PageTable::endLocations() {
  if (lines_ == nullptr) html_->add(part::locationsEnd);
}

std::string PageTable::titleOfBlock() const {
  if (!own_) return fmt::format("From kernel {} on", kernel_);
  const std::uint64_t first = own_->count() + 1;
  return fmt::format("{} to {}", grouped(first),
                     grouped(std::min(first + PageLines::blockLines - 1, rows_)));
}

}  // namespace consolidator::inspect
