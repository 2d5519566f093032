#include "inspect/verify/VerifyCommand.h"

#include "inspect/output/PlainText.h"
#include "inspect/verify/FindingCode.h"
#include "inspect/verify/VerifiedFile.h"

#include <fmt/format.h>

namespace consolidator::inspect {

namespace {

constexpr std::string_view projectWord = "project=";

// What the library stores for an option that is given without a value.
constexpr std::string_view withoutValue = "true";

// Calls `take(word)` for the words of lists that are separated by commas; returns the first word
// for which it returns false, if there is one.
template <typename Take>
std::optional<std::string> takeWords(const std::vector<std::string>& lists, Take take) {
  for (std::string_view list : lists) {
    while (true) {
      const std::string_view word = list.substr(0, list.find(','));
      if (!take(word)) return std::string(word);
      if (word.size() == list.size()) break;
      list.remove_prefix(word.size() + 1);
    }
  }
  return std::nullopt;
}

bool makeStricter(SeverityRules& severities, std::string_view word) {
  if (word == withoutValue) {
    severities.countWarningsAsErrors();
    return true;
  }
  const auto code = findingCodeOf(word);
  if (code) severities.countAsError(*code);
  return code.has_value();
}

bool require(Requirements& requirements, std::string_view word) {
  if (word.starts_with(projectWord)) {
    requirements.project = word.substr(projectWord.size());
    return true;
  }
  const auto isSet = [&](std::string_view name, bool& flag) {
    flag = flag || word == name;
    return word == name;
  };
  return isSet("kernels", requirements.kernels) || isSet("instances", requirements.instances) ||
         isSet("dwarf", requirements.dwarf) || isSet("locations", requirements.locations);
}

// A check of an option's value, which is a list of words.
template <typename Rules>
DeclaredOption::Check wordsFor(bool (*take)(Rules&, std::string_view), const std::string& what) {
  return [take, what](const std::string& list) {
    Rules rules;
    const auto unknown =
        takeWords({list}, [&](std::string_view word) { return take(rules, word); });
    return unknown ? fmt::format("there is no {} \"{}\"", what, *unknown) : std::string();
  };
}

}  // namespace

void VerifyCommand::declare(Options& options) {
  declareFormat(options);
  options.flag("--notes", listsNotes_, "List notes, too");
  options.flag("--all", listsAll_,
               fmt::format("List more than {} findings of a code", Findings::kept));
  options.flag("--strict", strict_, "Count warnings as errors, or the findings of these codes")
      .placeholder("[=CODE,...]")
      .check(wordsFor(makeStricter, "code"));
  options
      .option("--require", required_,
              "Count it as an error where one of these is missing: kernels, instances, dwarf, "
              "locations, project=NAME")
      .placeholder("WHAT,...")
      .check(wordsFor(require, "requirement"));
  options.flag("--quiet", isQuiet_, "Print nothing; the status tells");
  options.input(paths_);
}

Status VerifyCommand::run(Console& console) {
  Requirements requirements;
  takeWords(required_, [&](std::string_view word) { return require(requirements, word); });
  const auto report = makeReport(console);
  const SeverityRules severities = reportRules().severities;
  Status status = Status::Holds;
  for (const std::string& path : paths_) {
    const VerifiedFile file(path, requirements);
    if (report) report->add(file);
    status = worse(status, statusFor(file.verdict(severities)));
    if (!file.wasCut()) continue;
    status = Status::Unasked;
    if (!isQuiet_) console.messages.say(plain(path) + ": cut while it was read");
  }
  if (report) report->end();
  return status;
}

ReportRules VerifyCommand::reportRules() const {
  ReportRules rules{{}, listsNotes_, listsAll_};
  takeWords(strict_, [&](std::string_view word) { return makeStricter(rules.severities, word); });
  return rules;
}

std::unique_ptr<VerifyReport> VerifyCommand::makeReport(Console& console) const {
  if (isQuiet_) return nullptr;
  if (!writesDocument()) return std::make_unique<VerifyText>(console.out, reportRules());
  return std::make_unique<VerifyDocument>(console.out, reportRules(), documentFormat());
}

}  // namespace consolidator::inspect
