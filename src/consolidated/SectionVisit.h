#pragma once

#include "consolidated/SectionEntry.h"

#include <cstddef>
#include <cstdio>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <utility>

namespace consolidator {

/// Visits the stored sections of an open consolidated file in the order of their entries, up to the
/// first that cannot be read.
///
/// A file may have many names and DWARF sections, of any size and in the same place. The last one
/// of each counts; of the others, only a few bytes are read to check that they are there.
class SectionVisit {
 public:
  /// Is called with the stream at the start of a section of kernel records. Returns whether they
  /// could be read.
  using RecordsVisitor = std::function<bool(std::FILE* in)>;

  /// The stream must outlive the visit.
  SectionVisit(std::FILE* in, RecordsVisitor visitRecords)
      : in_(in), visitRecords_(std::move(visitRecords)) {}

  /// Visits the sections and cuts their sizes to the greatest one. Returns whether all of them
  /// could be read.
  bool visit(std::span<SectionEntry> entries);

  /// Reads the last one of the names that were visited, up to its first zero byte; nothing when
  /// there was none.
  std::optional<std::string> readProjectName() const;

  /// How many sections could be read.
  std::size_t visited() const { return visited_; }

  /// The last one of the DWARF sections that were visited; nothing when there was none, or it ended
  /// early.
  const std::optional<SectionEntry>& dwarf() const { return dwarf_; }

 private:
  bool visitSection(const SectionEntry& entry);

  std::FILE* in_;
  RecordsVisitor visitRecords_;
  std::size_t visited_ = 0;
  std::optional<SectionEntry> projectName_;
  std::optional<SectionEntry> dwarf_;
};

}  // namespace consolidator
