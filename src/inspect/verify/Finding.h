#pragma once

#include "consolidated/Text.h"
#include "inspect/verify/FindingCode.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace consolidator::inspect {

/// Something that is worth saying about a file, and where it is. A small value: the texts stay
/// where they are, in the file or in the program.
struct Finding {
  FindingCode code = FindingCode::CannotOpen;
  std::optional<std::uint32_t> section;      ///< position in the table
  std::optional<std::uint64_t> offset;       ///< in bytes from the start of the file
  std::optional<consolidated::Text> kernel;  ///< the name of the kernel concerned
  std::string_view subject = {};             ///< what of the sentence differs between findings
  std::int64_t number = 0;                   ///< the same, as a number
};

/// The sentence that tells a finding, without line end. It may hold texts from outside.
std::string sentenceOf(const Finding& finding);

/// The name of the finding's kernel as the tool reads it, shortened to 256 bytes and "..." where it
/// is longer: thousands of findings may name the same kernel.
std::string kernelNameOf(const Finding& finding);

/// What takes findings, those of one code in the order of their offsets as a rule.
class FindingSink {
 public:
  FindingSink() = default;
  virtual ~FindingSink() = default;

  virtual void add(const Finding& finding) = 0;

 protected:
  FindingSink(const FindingSink&) = default;
  FindingSink& operator=(const FindingSink&) = default;
};

}  // namespace consolidator::inspect
