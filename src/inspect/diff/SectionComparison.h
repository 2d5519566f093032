#pragma once

#include "consolidated/File.h"
#include "consolidated/Section.h"
#include "inspect/diff/ChangeReport.h"

#include <cstdint>

namespace consolidator::inspect {

/// Compares the section tables of two files, once: kinds, offsets and sizes as stored, and the
/// bytes of the sections. They match by kind, the n-th of a kind with the n-th.
class SectionComparison {
 public:
  SectionComparison(const consolidated::File& before, const consolidated::File& after);

  /// Reports all changes. Sections may overlap, so that comparing the bytes of each would take a
  /// time out of proportion to the file: returns false where it would, and stops.
  bool report(ChangeReport& report);

 private:
  bool reportPair(const consolidated::Section& before, const consolidated::Section& after,
                  ChangeReport& report);

  const consolidated::File* before_;
  const consolidated::File* after_;
  std::uint64_t bytesLeft_;  // which may be compared
};

}  // namespace consolidator::inspect
