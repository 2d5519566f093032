#include "inspect/verify/Verification.h"

#include "inspect/verify/StrictJson.h"
#include "inspect/verify/TextChecks.h"

#include <algorithm>
#include <string_view>

namespace consolidator::inspect {

namespace {

using consolidated::File;
using consolidated::KernelIterator;
using consolidated::Section;
using consolidated::SectionKind;
using consolidated::Text;

Text withoutZeroByte(const Text& text) {
  const std::string_view stored = text.stored();
  if (!stored.ends_with('\0')) return text;
  return {stored.substr(0, stored.size() - 1), text.offset()};
}

}  // namespace

Verification::Verification(const File& file, FindingSink& findings, VerificationDepth depth)
    : file_(&file),
      findings_(&findings),
      depth_(depth),
      order_(file),
      table_(file, order_, findings),
      kernels_(findings) {}

void Verification::run(const Requirements& requirements) {
  table_.check();
  if (looksAtTexts()) startComparison();
  checkContents();
  endComparison();
  if (looksAtTexts()) checkPresence(requirements);
}

// Of several sections nobody can tell which text should show which records.
void Verification::startComparison() {
  const auto json = table_.first(SectionKind::Json);
  const auto records = table_.first(SectionKind::KernelRecords);
  if (table_.count(SectionKind::Json) != 1 || table_.count(SectionKind::KernelRecords) > 1) return;
  const auto text = file_->bytesOf(*json);
  if (!text) return;
  const bool areRecordsFirst = records && records->index < json->index;
  comparison_.emplace(withoutZeroByte(*text).stored(),
                      areRecordsFirst ? JsonComparison::Conditions::PreparedOnceMore
                                      : JsonComparison::Conditions::Stored);
}

void Verification::checkContents() {
  order_.visitRead([this](const Section& section) {
    switch (section.kind) {
      case SectionKind::ProjectName:
        return checkProject(section);
      case SectionKind::Dwarf:
        return checkDwarf(section);
      case SectionKind::KernelRecords:
        return checkRecords(section);
      case SectionKind::Json:
        return checkJson(section);
    }
  });
}

void Verification::checkProject(const Section& section) {
  const auto name = file_->bytesOf(section);
  if (!name || name->offset() < projectEnd_) return;
  projectEnd_ = name->offset() + name->stored().size();
  checkText(*name, {section.index, std::nullopt, false}, "the project's name", *findings_);
}

void Verification::checkDwarf(const Section& section) {
  const auto dwarf = file_->bytesOf(section);
  hasDwarf_ = hasDwarf_ || (dwarf && !dwarf->stored().empty());
}

void Verification::checkRecords(const Section& section) {
  const auto offset = section.seekOffset();
  if (!offset || *offset < recordsEnd_) {
    areRecordsWhole_ = false;
    return;
  }
  KernelIterator kernel = file_->kernels(section).begin();
  for (; kernel != KernelIterator(); ++kernel) {
    if (looksAtTexts()) kernels_.check(*kernel);
    if (comparison_) comparison_->add(*kernel);
  }
  endRecords(section, kernel);
}

void Verification::endRecords(const Section& section, const KernelIterator& end) {
  recordsEnd_ = end.offset();
  if (const auto& fault = end.fault()) {
    areRecordsWhole_ = false;
    findings_->add({FindingCode::RecordsShort, section.index, fault->offset, {}});
  } else if (end.offset() != std::uint64_t{*section.seekOffset()} + section.clampedSize()) {
    findings_->add({FindingCode::RecordsSize,
                    section.index,
                    section.entryOffset(),
                    {},
                    {},
                    static_cast<std::int64_t>(end.offset())});
  }
}

void Verification::checkJson(const Section& section) {
  const auto stored = file_->bytesOf(section);
  if (!stored || stored->offset() < jsonEnd_) return;
  const std::uint64_t size = stored->stored().size();
  jsonEnd_ = stored->offset() + size;
  const Text text = withoutZeroByte(*stored);
  if (text.stored().size() == size) {
    const std::uint64_t last = size == 0 ? 0 : size - 1;
    findings_->add({FindingCode::JsonUnterminated, section.index, stored->offset() + last, {}});
  }
  if (looksAtTexts() && !comparison_) checkStrictness(section.index, text);
}

void Verification::checkStrictness(std::uint32_t section, const Text& text) {
  const std::size_t position = findNotStrict(text.stored());
  if (position == std::string_view::npos) return;
  const auto number = static_cast<std::int64_t>(position);
  findings_->add({FindingCode::JsonNotStrict, section, text.offset() + position, {}, {}, number});
}

// Kernels that cannot be read may be in the text all the same. Most texts are what strict records
// render to, so that nobody needs to look whether they are strict.
void Verification::endComparison() {
  if (!comparison_) return;
  const auto json = table_.first(SectionKind::Json);
  const std::uint32_t section = json->index;
  const Text text = withoutZeroByte(*file_->bytesOf(*json));
  const auto difference =
      areRecordsWhole_ ? comparison_->differenceOfAll() : comparison_->differenceOfStart();
  if (difference || !areRecordsWhole_ || !kernels_.renderStrictly()) {
    checkStrictness(section, text);
  }
  if (!difference) return;
  const auto number = static_cast<std::int64_t>(*difference);
  findings_->add({FindingCode::JsonMismatch, section, text.offset() + *difference, {}, {}, number});
}

void Verification::checkPresence(const Requirements& requirements) {
  const auto reportIf = [&](bool isTrue, FindingCode code) {
    if (isTrue) findings_->add({code, {}, {}, {}});
  };
  reportIf(!kernels_.hasKernels(), FindingCode::NoKernels);
  reportIf(!hasDwarf_, FindingCode::NoDwarf);
  reportIf(!kernels_.hasLocations(), FindingCode::NoLocation);
  reportIf(requirements.kernels && !kernels_.hasKernels(), FindingCode::MissingKernels);
  reportIf(requirements.instances && !kernels_.hasInstances(), FindingCode::MissingInstances);
  reportIf(requirements.dwarf && !hasDwarf_, FindingCode::MissingDwarf);
  reportIf(requirements.locations && !kernels_.hasLocations(), FindingCode::MissingLocations);
  if (!requirements.project) return;
  const auto project = file_->project();
  reportIf(!project || project->view() != *requirements.project, FindingCode::MissingProject);
}

}  // namespace consolidator::inspect
