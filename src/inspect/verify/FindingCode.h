#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace consolidator::inspect {

enum class Severity : std::uint8_t { Error, Warning, Note };

/// "error", "warning" or "note".
std::string_view nameOf(Severity severity);

/// What may be found in a file. The order is that in which findings are listed.
enum class FindingCode : std::uint8_t {
  CannotOpen,
  ShortHeader,
  WrongMagic,
  CutWhileRead,
  UnsupportedVersion,
  ShortTable,
  UnknownKind,
  SectionUnwritten,
  SectionOutside,
  SectionOverlap,
  RecordsShort,
  RecordsSize,
  JsonMissing,
  JsonUnterminated,
  JsonMismatch,
  DuplicateSection,
  ProjectEntries,
  JsonAfterRecords,
  Gap,
  TrailingBytes,
  DuplicateKernel,
  UnnamedKernel,
  UnknownType,
  UnknownCondition,
  ZeroByteInText,
  TextNotUtf8,
  TextBreaksJson,
  DuplicateCondition,
  ConditionDecays,
  MalformedCondition,
  NoKernels,
  NoInstance,
  NoDwarf,
  NoLocation,
  UnlocatedBit,
  JsonNotStrict,
  MissingKernels,
  MissingInstances,
  MissingDwarf,
  MissingLocations,
  MissingProject,
};

inline constexpr std::size_t findingCodeCount =
    static_cast<std::size_t>(FindingCode::MissingProject) + 1;

/// The name of a code, which stays the same in all versions: "json-mismatch".
std::string_view nameOf(FindingCode code);

/// The code of a name, or none.
std::optional<FindingCode> findingCodeOf(std::string_view name);

/// How bad it is, unless the user is stricter.
Severity severityOf(FindingCode code);

/// The sentence for people, for fmt: "{subject}" is what it is about, "{number}" a number.
std::string_view sentenceOf(FindingCode code);

}  // namespace consolidator::inspect
