#include "inspect/verify/FindingCode.h"

#include <algorithm>
#include <array>

namespace consolidator::inspect {

namespace {

struct FindingEntry {
  FindingCode code;
  Severity severity;
  std::string_view name;
  std::string_view sentence;
};

// In the order of the enumerators.
constexpr auto findingEntries = [] {
  using enum FindingCode;
  constexpr auto error = Severity::Error;
  constexpr auto warning = Severity::Warning;
  constexpr auto note = Severity::Note;
  return std::array<FindingEntry, findingCodeCount>{{
      {CannotOpen, error, "cannot-open", "{subject}"},
      {ShortHeader, error, "short-header", "the file is shorter than the header of 16 bytes"},
      {WrongMagic, error, "wrong-magic", "the file does not begin with the magic number"},
      {CutWhileRead, error, "cut-while-read", "the file was made shorter while it was read"},
      {UnsupportedVersion, error, "unsupported-version",
       "major version {number}: consolidator takes no version above 1"},
      {ShortTable, error, "short-table", "the table claims {number} more entries than are there"},
      {UnknownKind, error, "unknown-kind",
       "a section of kind {number}, at which consolidator ends its reading"},
      {SectionUnwritten, error, "section-unwritten",
       "the section claims bytes of the header or the table: it was never written"},
      {SectionOutside, error, "section-outside",
       "the section lies beyond the end of the file or of 2 GiB"},
      {SectionOverlap, error, "section-overlap", "the section shares bytes with another one"},
      {RecordsShort, error, "records-short",
       "the kernel records ask for more bytes here than the file has"},
      {RecordsSize, error, "records-size",
       "the kernel records end at {number}, which is not the end of their section"},
      {JsonMissing, error, "json-missing", "the file has no JSON section"},
      {JsonUnterminated, error, "json-unterminated", "the JSON text does not end with a zero byte"},
      {JsonMismatch, error, "json-mismatch",
       "the JSON text differs from what the kernel records say, {number} bytes into it"},
      {DuplicateSection, error, "duplicate-section", "{subject}"},
      {ProjectEntries, note, "project-entries", "{number} sections hold the project's name"},
      {JsonAfterRecords, warning, "json-after-records",
       "the JSON text stands after the kernel records in the table"},
      {Gap, warning, "gap", "{number} bytes that belong to nothing"},
      {TrailingBytes, warning, "trailing-bytes",
       "{number} bytes at the end that belong to nothing"},
      {DuplicateKernel, warning, "duplicate-kernel", "an earlier kernel has the same name"},
      {UnnamedKernel, warning, "unnamed-kernel", "the kernel has no name"},
      {UnknownType, warning, "unknown-type", "the kernel is of unknown type {number}"},
      {UnknownCondition, warning, "unknown-condition", "a condition is of unknown kind {number}"},
      {ZeroByteInText, warning, "zero-byte-in-text",
       "{subject} holds a zero byte, at which consolidator ends it"},
      {TextNotUtf8, warning, "text-not-utf8", "{subject} is not UTF-8"},
      {TextBreaksJson, warning, "text-breaks-json",
       "{subject} holds a character that breaks the JSON text"},
      {DuplicateCondition, warning, "duplicate-condition",
       "an earlier condition of the kernel says the same"},
      {ConditionDecays, warning, "condition-decays",
       "the next save will change the condition by more than the order of two operands"},
      {MalformedCondition, warning, "malformed-condition",
       "the condition is no complete expression in prefix form"},
      {NoKernels, warning, "no-kernels", "the file holds no kernel"},
      {NoInstance, warning, "no-instance", "the kernel has no instance path"},
      {NoDwarf, note, "no-dwarf", "the file holds no DWARF"},
      {NoLocation, note, "no-location", "no bit has a location"},
      {UnlocatedBit, note, "unlocated-bit",
       "bit {number} of {subject} has the location (0, 0): there, or not known"},
      {JsonNotStrict, note, "json-not-strict",
       "the JSON text stops being strict JSON, {number} bytes into it"},
      {MissingKernels, error, "missing-kernels", "kernels are required, and there is none"},
      {MissingInstances, error, "missing-instances",
       "instance paths are required, and there is none"},
      {MissingDwarf, error, "missing-dwarf", "DWARF is required, and there is none"},
      {MissingLocations, error, "missing-locations", "locations are required, and there is none"},
      {MissingProject, error, "missing-project", "the project is not the required one"},
  }};
}();

constexpr bool entriesStandInOrder() {
  for (std::size_t i = 0; i < findingEntries.size(); ++i) {
    if (findingEntries[i].code != static_cast<FindingCode>(i)) return false;
  }
  return true;
}

static_assert(entriesStandInOrder());

constexpr const FindingEntry& entryOfFinding(FindingCode code) {
  return findingEntries[static_cast<std::size_t>(code)];
}

}  // namespace

std::string_view nameOf(Severity severity) {
  constexpr std::array<std::string_view, 3> names = {"error", "warning", "note"};
  return names[static_cast<std::size_t>(severity)];
}

std::string_view nameOf(FindingCode code) { return entryOfFinding(code).name; }

std::optional<FindingCode> findingCodeOf(std::string_view name) {
  const auto* const found =
      std::find_if(findingEntries.begin(), findingEntries.end(),
                   [&](const FindingEntry& entry) { return entry.name == name; });
  return found == findingEntries.end() ? std::nullopt : std::optional(found->code);
}

Severity severityOf(FindingCode code) { return entryOfFinding(code).severity; }

std::string_view sentenceOf(FindingCode code) { return entryOfFinding(code).sentence; }

}  // namespace consolidator::inspect
