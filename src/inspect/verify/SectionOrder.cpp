#include "inspect/verify/SectionOrder.h"

namespace consolidator::inspect {

SectionOrder::SectionOrder(const consolidated::File& file)
    : sections_(file.sections()), tableEnd_(consolidated::Section{sections_.size()}.entryOffset()) {
  indices_.reserve(sections_.size());
  for (const consolidated::Section section : sections_) {
    if (!isUnwritten(section)) indices_.push_back(section.index);
  }
}

}  // namespace consolidator::inspect
