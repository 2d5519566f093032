#include "inspect/report/PageLines.h"

#include "inspect/report/PageParts.h"

namespace consolidator::inspect {

PageLines::~PageLines() {
  if (count_ % blockLines != 0) html_->add(part::blockEnd);
}

void PageLines::begin(std::string_view title) {
  if (count_ % blockLines == 0) html_->add(part::blockBegin, title, kind_);
  isFirstCell_ = true;
}

void PageLines::end() {
  html_->endLine();
  ++count_;
  if (count_ % blockLines == 0) html_->add(part::blockEnd);
}

void PageLines::beginCell() {
  if (!isFirstCell_) html_->tab();
  isFirstCell_ = false;
}

}  // namespace consolidator::inspect
