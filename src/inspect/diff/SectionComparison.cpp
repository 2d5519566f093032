#include "inspect/diff/SectionComparison.h"

#include "inspect/diff/OrderCheck.h"
#include "inspect/records/SectionItems.h"
#include "lookup/Matching.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

namespace consolidator::inspect {

namespace {

using consolidated::File;
using consolidated::Section;

// In whole sizes of the larger file.
constexpr std::uint64_t mostOverlaps = 4;

// Numbers without a name are kinds of their own.
std::string keyOfSection(const Section& section) {
  return std::to_string(static_cast<std::uint32_t>(section.kind));
}

}  // namespace

SectionComparison::SectionComparison(const File& before, const File& after)
    : before_(&before),
      after_(&after),
      bytesLeft_(mostOverlaps * std::max(before.bytes().size(), after.bytes().size())) {}

bool SectionComparison::report(ChangeReport& report) {
  const auto before = before_->sections();
  const auto after = after_->sections();
  const std::vector<Section> elements(after.begin(), after.end());
  Matching matching(elements, keyOfSection);
  OrderCheck order;
  for (const Section& section : before) {
    const auto position = matching.take(keyOfSection(section));
    if (!position) {
      report.removed(Subject::Section, nameOf(section.kind), section);
    } else if (reportPair(section, elements[*position], report)) {
      order.add(*position);
    } else {
      return false;
    }
  }
  for (std::size_t i = 0; i < elements.size(); ++i) {  // NOLINT(modernize-loop-convert): asks for i
    if (!matching.isLeft(i)) continue;
    report.added(Subject::Section, nameOf(elements[i].kind), elements[i]);
  }
  if (order.isReordered()) report.reordered("sections", before, after);
  return true;
}

// Returns whether the bytes could be compared.
bool SectionComparison::reportPair(const Section& before, const Section& after,
                                   ChangeReport& report) {
  const auto bytesBefore = before_->bytesOf(before);
  const auto bytesAfter = after_->bytesOf(after);
  const std::uint64_t size = bytesBefore ? bytesBefore->stored().size() : 0;
  if (size > bytesLeft_) return false;
  bytesLeft_ -= size;
  const bool bytesDiffer = bytesBefore.has_value() != bytesAfter.has_value() ||
                           (bytesBefore && bytesBefore->stored() != bytesAfter->stored());
  if (bytesDiffer || before.offset != after.offset || before.size != after.size) {
    report.changed(Subject::Section, nameOf(before.kind), before, after, bytesDiffer);
  }
  return true;
}

}  // namespace consolidator::inspect
