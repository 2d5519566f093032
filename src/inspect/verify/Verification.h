#pragma once

#include "consolidated/File.h"
#include "inspect/verify/Finding.h"
#include "inspect/verify/JsonComparison.h"
#include "inspect/verify/KernelChecks.h"
#include "inspect/verify/SectionOrder.h"
#include "inspect/verify/TableChecks.h"

#include <cstdint>
#include <optional>
#include <string>

namespace consolidator::inspect {

/// What must be in a file, each beyond being sound.
struct Requirements {
  bool kernels = false;
  bool instances = false;
  bool dwarf = false;
  bool locations = false;
  std::optional<std::string> project;  ///< its name
};

/// How much of a file is looked at.
enum class VerificationDepth {
  Everything,
  Structure,  ///< table, sections and where the records end: no texts, and nothing is rendered
};

/// One look at all that is in a file. Takes a time that is linear in the size of the file, whatever
/// its table says: kernel records that lie on others, the JSON texts that do and the like are
/// looked at once. Memory grows with the table, with the number of kernels by 16 bytes each, and
/// with the conditions of the largest kernel.
class Verification {
 public:
  /// Both must outlive this object.
  Verification(const consolidated::File& file, FindingSink& findings,
               VerificationDepth depth = VerificationDepth::Everything);

  void run(const Requirements& requirements);

 private:
  void startComparison();

  bool looksAtTexts() const { return depth_ == VerificationDepth::Everything; }

  void checkContents();
  void checkProject(const consolidated::Section& section);
  void checkDwarf(const consolidated::Section& section);
  void checkRecords(const consolidated::Section& section);
  void endRecords(const consolidated::Section& section, const consolidated::KernelIterator& end);
  void checkJson(const consolidated::Section& section);
  void checkStrictness(std::uint32_t section, const consolidated::Text& text);
  void endComparison();
  void checkPresence(const Requirements& requirements);

  const consolidated::File* file_;
  FindingSink* findings_;
  VerificationDepth depth_;
  SectionOrder order_;
  TableChecks table_;
  KernelChecks kernels_;
  std::optional<JsonComparison> comparison_;
  std::uint64_t projectEnd_ = 0;  // how far sections of each kind were looked at
  std::uint64_t recordsEnd_ = 0;
  std::uint64_t jsonEnd_ = 0;
  bool areRecordsWhole_ = true;
  bool hasDwarf_ = false;
};

}  // namespace consolidator::inspect
