#pragma once

#include "inspect/output/Status.h"
#include "inspect/records/ConsolidatedInput.h"
#include "inspect/verify/Finding.h"
#include "inspect/verify/Findings.h"
#include "inspect/verify/SeverityRules.h"
#include "inspect/verify/Verification.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace consolidator::inspect {

enum class Verdict : std::uint8_t { Sound, Unsound, Unreadable };

/// "sound", "unsound" or "unreadable".
std::string_view nameOf(Verdict verdict);

/// The status of a command that has come to a verdict.
Status statusFor(Verdict verdict);

/// A file and what was found in it.
class VerifiedFile {
 public:
  /// Opens the file of a name ("-" is standard input) and looks at all of it.
  VerifiedFile(std::string path, Requirements requirements);

  const std::string& path() const { return path_; }

  std::uint64_t count(FindingCode code) const { return findings_.count(code); }

  /// Up to Findings::kept findings of a code.
  const std::vector<Finding>& list(FindingCode code) const { return findings_.list(code); }

  /// Gives all findings of a code to `sink`, by looking at the file anew if there are more than are
  /// kept.
  void listAll(FindingCode code, FindingSink& sink) const;

  /// Sound is a file in which there is no error.
  Verdict verdict(const SeverityRules& severities) const;

  /// Whether the file was made shorter while it was read, be it by now.
  bool wasCut() const;

 private:
  void verify(ConsolidatedInput input);
  void reportProblem(const InputProblem& problem);

  std::string path_;
  Requirements requirements_;
  std::string problem_;
  std::optional<ConsolidatedInput> input_;  // unless it cannot be read
  Findings findings_;
};

}  // namespace consolidator::inspect
