#pragma once

#include "consolidated/File.h"
#include "consolidated/Section.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <vector>

namespace consolidator::inspect {

/// Where a section ends as it is stored; the greatest number where that is even beyond it.
inline std::uint64_t endOf(const consolidated::Section& section) {
  const std::uint64_t room = std::numeric_limits<std::uint64_t>::max() - section.offset;
  return section.offset + std::min<std::uint64_t>(room, section.clampedSize());
}

/// The sections of a file that were written, in the order of their places: the table may list them
/// in any order, and as often as it likes. Takes 4 bytes for each.
class SectionOrder {
 public:
  explicit SectionOrder(const consolidated::File& file);

  /// All sections of the table. Their number stays, also when the file is cut while it is read.
  const consolidated::Sections& sections() const { return sections_; }

  /// Whether a section has bytes that start inside the header or the entries that are there. So
  /// does one that the tool found no place for below 2 GiB: nothing of it was written.
  bool isUnwritten(const consolidated::Section& section) const {
    return section.size > 0 && section.offset < tableEnd_;
  }

  /// Calls `visit(section)` in the order of the offsets as stored.
  template <typename Visit>
  void visitStored(Visit visit) {
    sort([](const consolidated::Section& section) { return section.offset; });
    for (const std::uint32_t index : indices_) visit(sections_[index]);
  }

  /// Calls `visit(section)` in the order of the offsets at which the tool looks.
  template <typename Visit>
  void visitRead(Visit visit) {
    sort([](const consolidated::Section& section) {
      return static_cast<std::uint32_t>(section.offset);
    });
    for (const std::uint32_t index : indices_) visit(sections_[index]);
  }

 private:
  template <typename OffsetOf>
  void sort(OffsetOf offsetOf) {
    std::sort(indices_.begin(), indices_.end(), [&](std::uint32_t a, std::uint32_t b) {
      const auto first = offsetOf(sections_[a]);
      const auto second = offsetOf(sections_[b]);
      return first < second || (first == second && a < b);
    });
  }

  consolidated::Sections sections_;
  std::uint64_t tableEnd_;
  std::vector<std::uint32_t> indices_;
};

}  // namespace consolidator::inspect
