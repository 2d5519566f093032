#include "inspect/PageTable.h"

#include "inspect/CoverageBar.h"
#include "inspect/PageText.h"

#include <algorithm>

namespace consolidator::inspect {

PageTable::PageTable(HtmlWriter& html, RowBudget& budget, const PageListKind& kind,
                     std::uint64_t rows)
    : html_(&html), kind_(&kind), rows_(rows), isTable_(budget.take(rows)) {
  if (rows == 0) return;
  html.add(part::listTitle, kind.title, grouped(rows));
  if (isTable_) {
    html.add(*kind.table);
  } else {
    html.add(part::folded, kind.columns, blockLines);
  }
}

PageTable::~PageTable() {
  if (rows_ > 0 && isTable_) html_->add(part::tableEnd);
  endBlock();
}

void PageTable::beginRow() {
  isFirstCell_ = true;
  if (isTable_) {
    html_->add(part::rowBegin, kind_->name);
  } else if (row_ % blockLines == 0) {
    beginBlock();
  }
}

void PageTable::endRow() {
  ++row_;
  if (isTable_) {
    html_->add(part::rowEnd);
    return;
  }
  html_->endLine();
  if (row_ % blockLines == 0) endBlock();
}

void PageTable::coverage(const CoverageCounts& counts) {
  if (isTable_) {
    writeCoverageBar(*html_, counts);
  } else {
    separate();
    html_->text(wordsOf(counts));
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
  if (isTable_) {
    html_->add(part::locationsBegin);
  } else {
    separate();
  }
}

void PageTable::endLocations() {
  if (isTable_) html_->add(part::locationsEnd);
}

void PageTable::separate() {
  if (!isFirstCell_) html_->tab();
  isFirstCell_ = false;
}

void PageTable::beginBlock() {
  html_->add(part::blockBegin, grouped(row_ + 1), grouped(std::min(row_ + blockLines, rows_)),
             kind_->name);
  isInBlock_ = true;
}

void PageTable::endBlock() {
  if (isInBlock_) html_->add(part::blockEnd);
  isInBlock_ = false;
}

}  // namespace consolidator::inspect
