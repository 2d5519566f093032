#pragma once

#include "consolidated/File.h"
#include "inspect/verify/Finding.h"
#include "inspect/verify/SectionOrder.h"

#include <array>
#include <cstdint>
#include <optional>

namespace consolidator::inspect {

/// Checks header and table of a file, and how its sections lie.
class TableChecks {
 public:
  /// All three must outlive this object.
  TableChecks(const consolidated::File& file, SectionOrder& order, FindingSink& findings)
      : file_(&file), order_(&order), findings_(&findings) {}

  void check();

  /// How many sections of a kind were written, once all is checked.
  std::uint32_t count(consolidated::SectionKind kind) const {
    return seen_[static_cast<std::size_t>(kind)].count;
  }

  /// The first section of a kind that was written, if there is one, once all is checked.
  std::optional<consolidated::Section> first(consolidated::SectionKind kind) const {
    return seen_[static_cast<std::size_t>(kind)].first;
  }

 private:
  struct Seen {
    std::uint32_t count = 0;
    std::optional<consolidated::Section> first;
  };

  void checkHeader();
  void checkEntry(const consolidated::Section& section);
  void checkKind(const consolidated::Section& section);
  void checkProject(const consolidated::Section& section, const consolidated::Section& first);
  void checkOverlaps();
  void checkGaps();
  void report(FindingCode code, const consolidated::Section& section, std::string_view subject = {},
              std::int64_t number = 0);

  const consolidated::File* file_;
  SectionOrder* order_;
  FindingSink* findings_;
  std::array<Seen, 4> seen_;
  std::uint64_t comparedBytes_ = 0;  // of project names
  bool isProjectOne_ = true;
};

}  // namespace consolidator::inspect
