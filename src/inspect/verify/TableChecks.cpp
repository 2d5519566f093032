#include "inspect/verify/TableChecks.h"

#include <algorithm>
#include <vector>

namespace consolidator::inspect {

namespace {

using consolidated::Section;
using consolidated::SectionKind;

constexpr std::uint64_t twoGiB = std::uint64_t{1} << 31U;
constexpr std::uint64_t versionOffset = 4;

bool isOneOf(SectionKind kind) { return kind <= SectionKind::Json; }

}  // namespace

void TableChecks::check() {
  checkHeader();
  for (const Section section : order_->sections()) {
    if (order_->isUnwritten(section)) {
      report(FindingCode::SectionUnwritten, section);
    } else {
      checkEntry(section);
    }
  }
  const Seen& projects = seen_[static_cast<std::size_t>(SectionKind::ProjectName)];
  if (projects.count > 1 && isProjectOne_) {
    report(FindingCode::ProjectEntries, *projects.first, {}, projects.count);
  }
  if (count(SectionKind::Json) == 0) findings_->add({FindingCode::JsonMissing, {}, {}, {}});
  checkOverlaps();
  checkGaps();
}

void TableChecks::checkHeader() {
  if (file_->majorVersion() > 1) {
    findings_->add(
        {FindingCode::UnsupportedVersion, {}, versionOffset, {}, {}, file_->majorVersion()});
  }
  const std::uint32_t there = order_->sections().size();
  if (file_->claimedSections() > there) {
    findings_->add({FindingCode::ShortTable,
                    {},
                    Section{there}.entryOffset(),
                    {},
                    {},
                    std::int64_t{file_->claimedSections()} - there});
  }
}

void TableChecks::checkEntry(const Section& section) {
  if (section.offset >= twoGiB || endOf(section) > file_->bytes().size()) {
    report(FindingCode::SectionOutside, section);
  }
  if (isOneOf(section.kind)) {
    checkKind(section);
  } else {
    report(FindingCode::UnknownKind, section, {}, static_cast<std::uint32_t>(section.kind));
  }
}

void TableChecks::checkKind(const Section& section) {
  Seen& seen = seen_[static_cast<std::size_t>(section.kind)];
  ++seen.count;
  if (!seen.first) seen.first = section;
  const bool isFurther = seen.count > 1;
  switch (section.kind) {
    case SectionKind::ProjectName:
      if (isFurther) checkProject(section, *seen.first);
      return;
    case SectionKind::Dwarf:
      if (isFurther) report(FindingCode::DuplicateSection, section, "a further DWARF section");
      return;
    case SectionKind::KernelRecords:
      if (isFurther) {
        report(FindingCode::DuplicateSection, section, "a further section of kernel records");
      }
      return;
    case SectionKind::Json:
      if (isFurther) report(FindingCode::DuplicateSection, section, "a further JSON section");
      if (!isFurther && count(SectionKind::KernelRecords) > 0) {
        report(FindingCode::JsonAfterRecords, section);
      }
      return;
  }
}

// Names that lie on the same bytes may be longer altogether than the file; then it is unsound as it
// is, and the rest of them is not compared.
void TableChecks::checkProject(const Section& section, const Section& first) {
  const auto name = file_->bytesOf(section);
  const auto firstName = file_->bytesOf(first);
  const bool isSame = section.size == first.size && section.offset == first.offset;
  if (!name || !firstName || isSame || comparedBytes_ > file_->bytes().size()) return;
  comparedBytes_ += std::min(name->stored().size(), firstName->stored().size());
  if (name->stored() == firstName->stored()) return;
  isProjectOne_ = false;
  report(FindingCode::DuplicateSection, section, "a project name that differs from the first one");
}

// Of the sections in their order each overlaps one before it, or the next one, or none.
void TableChecks::checkOverlaps() {
  std::vector<bool> overlaps(order_->sections().size());
  std::uint64_t end = 0;  // of all sections so far
  std::optional<Section> previous;
  order_->visitStored([&](const Section& section) {
    if (section.size == 0) return;
    if (section.offset < end) overlaps[section.index] = true;
    if (previous && section.offset < endOf(*previous)) overlaps[previous->index] = true;
    end = std::max(end, endOf(section));
    previous = section;
  });
  for (const Section section : order_->sections()) {
    if (overlaps[section.index]) report(FindingCode::SectionOverlap, section);
  }
}

void TableChecks::checkGaps() {
  const std::uint64_t fileSize = file_->bytes().size();
  std::uint64_t end = Section{file_->claimedSections()}.entryOffset();
  order_->visitStored([&](const Section& section) {
    if (section.size == 0) return;
    if (section.offset > end && section.offset < fileSize) {
      findings_->add(
          {FindingCode::Gap, {}, end, {}, {}, static_cast<std::int64_t>(section.offset - end)});
    }
    end = std::max(end, endOf(section));
  });
  if (end < fileSize) {
    findings_->add(
        {FindingCode::TrailingBytes, {}, end, {}, {}, static_cast<std::int64_t>(fileSize - end)});
  }
}

void TableChecks::report(FindingCode code, const Section& section, std::string_view subject,
                         std::int64_t number) {
  findings_->add({code, section.index, section.entryOffset(), {}, subject, number});
}

}  // namespace consolidator::inspect
