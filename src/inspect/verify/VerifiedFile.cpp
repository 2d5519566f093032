#include "inspect/verify/VerifiedFile.h"

#include <algorithm>
#include <array>
#include <system_error>
#include <utility>

namespace consolidator::inspect {

namespace {

constexpr std::array unreadableCodes = {FindingCode::CannotOpen, FindingCode::ShortHeader,
                                        FindingCode::WrongMagic, FindingCode::CutWhileRead};

// Hands on the findings of one code.
class OneCode : public FindingSink {
 public:
  OneCode(FindingCode code, FindingSink& sink) : code_(code), sink_(&sink) {}

  void add(const Finding& finding) override {
    if (finding.code == code_) sink_->add(finding);
  }

 private:
  FindingCode code_;
  FindingSink* sink_;
};

}  // namespace

std::string_view nameOf(Verdict verdict) {
  constexpr std::array<std::string_view, 3> names = {"sound", "unsound", "unreadable"};
  return names[static_cast<std::size_t>(verdict)];
}

Status statusFor(Verdict verdict) {
  constexpr std::array statuses = {Status::Holds, Status::Fails, Status::Unasked};
  return statuses[static_cast<std::size_t>(verdict)];
}

VerifiedFile::VerifiedFile(std::string path, Requirements requirements)
    : path_(std::move(path)), requirements_(std::move(requirements)) {
  auto opened = ConsolidatedInput::open(path_);
  if (const auto* const problem = std::get_if<InputProblem>(&opened)) {
    reportProblem(*problem);
  } else {
    verify(std::get<ConsolidatedInput>(std::move(opened)));
  }
}

void VerifiedFile::listAll(FindingCode code, FindingSink& sink) const {
  if (count(code) > Findings::kept) {
    OneCode oneCode(code, sink);
    return Verification(input_->file(), oneCode).run(requirements_);
  }
  for (const Finding& finding : list(code)) sink.add(finding);
}

Verdict VerifiedFile::verdict(const SeverityRules& severities) const {
  if (std::any_of(unreadableCodes.begin(), unreadableCodes.end(),
                  [this](FindingCode code) { return count(code) > 0; })) {
    return Verdict::Unreadable;
  }
  return findings_.hasError(severities) ? Verdict::Unsound : Verdict::Sound;
}

bool VerifiedFile::wasCut() const { return input_ && input_->wasCut(); }

// What was found after the cut was not in the file, so all of it is forgotten.
void VerifiedFile::verify(ConsolidatedInput input) {
  input_ = std::move(input);
  Findings findings;
  Verification(input_->file(), findings).run(requirements_);
  if (!wasCut()) {
    findings_ = findings;
  } else {
    findings_.add({FindingCode::CutWhileRead, {}, {}, {}});
  }
}

void VerifiedFile::reportProblem(const InputProblem& problem) {
  const consolidated::Fault& fault = problem.fault;
  switch (fault.code) {
    case consolidated::FaultCode::ShortHeader:
      return findings_.add({FindingCode::ShortHeader, {}, 0, {}});
    case consolidated::FaultCode::WrongMagic:
      return findings_.add({FindingCode::WrongMagic, {}, 0, {}});
    default:
      problem_ = fault.systemError == 0 ? fault.sentence()
                                        : std::generic_category().message(fault.systemError);
      return findings_.add({FindingCode::CannotOpen, {}, {}, {}, problem_});
  }
}

}  // namespace consolidator::inspect
