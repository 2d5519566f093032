#pragma once

#include "../tests/support/PlainContainer.h"
#include "Require.h"
#include "consolidated/FileHeader.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator {

/// Whether a container holds several sections of a kind. Of these kinds that is no sign of damage,
/// but not stable: all records are written for each section of them, and each DWARF section is
/// written from the bytes of the last.
inline bool hasSeveral(const PlainContainer& container, SectionKind kind) {
  return std::count_if(container.table.begin(), container.table.end(),
                       [&](const SectionEntry& entry) { return entry.kind == kind; }) > 1;
}

inline KernelSequence withoutConditionTexts(KernelSequence kernels) {
  for (KernelRecord& kernel : kernels) {
    kernel.breakableConditions.edit([](std::vector<BreakableCondition>& conditions) {
      for (BreakableCondition& condition : conditions) condition.condition.clear();
    });
  }
  return kernels;
}

/// Whether all that a container holds can be expected after a save. A foreign file keeps its magic,
/// so nothing that is saved to it can be read again.
inline bool isLasting(const PlainContainer& container) {
  return numberAt(container.header, 0, 4) == FileHeader::expectedMagic && container.complete() &&
         !hasSeveral(container, SectionKind::Dwarf) &&
         !hasSeveral(container, SectionKind::KernelRecords);
}

/// Whether the records of a container are written in their final form: a JSON text after them
/// prepares their conditions once more.
inline bool writesRecordsLast(const PlainContainer& container) {
  const auto isJson = [](const SectionEntry& entry) { return entry.kind == SectionKind::Json; };
  const auto records = std::find_if(
      container.table.begin(), container.table.end(),
      [](const SectionEntry& entry) { return entry.kind == SectionKind::KernelRecords; });
  return std::none_of(records, container.table.end(), isJson);
}

/// Requires that a container reads back from the bytes that its save gave.
inline void requireReadsBack(const PlainContainer& saved, std::string_view bytes) {
  if (!isLasting(saved) || !writesRecordsLast(saved)) return;
  const PlainContainer read(bytes);
  require(read.complete(), "what was saved whole can be read whole");
  require(read.header == saved.header, "the header reads back");
  require(read.table == saved.table, "the table reads back");
  require(read.projectName == saved.projectName, "the project reads back");
  require(read.dwarf == saved.dwarf, "the DWARF bytes read back");
  require(read.kernels == saved.kernels, "the kernels read back");
}

/// Requires that a save of what an earlier save wrote changed nothing but the texts of conditions.
inline void requireStable(std::string_view firstBytes, std::string_view secondBytes) {
  const PlainContainer first(firstBytes);
  if (!isLasting(first)) return;
  const PlainContainer second(secondBytes);
  require(second.complete(), "what was saved whole can be read whole");
  require(first.header == second.header, "saving again keeps the header");
  require(first.projectName == second.projectName, "saving again keeps the project");
  require(first.dwarf == second.dwarf, "saving again keeps the DWARF bytes");
  require(withoutConditionTexts(first.kernels) == withoutConditionTexts(second.kernels),
          "saving again keeps the kernels except the texts of their conditions");
  require(
      std::equal(first.table.begin(), first.table.end(), second.table.begin(), second.table.end(),
                 [](const SectionEntry& a, const SectionEntry& b) { return a.kind == b.kind; }),
      "saving again keeps the order of the sections");
}

}  // namespace consolidator
