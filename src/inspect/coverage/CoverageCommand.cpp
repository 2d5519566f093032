#include "inspect/coverage/CoverageCommand.h"

#include "inspect/coverage/CoverageDocument.h"
#include "inspect/coverage/CoverageGoal.h"
#include "inspect/coverage/CoverageText.h"
#include "inspect/output/PlainText.h"

#include <fmt/format.h>

namespace consolidator::inspect {

namespace {

using consolidated::File;

std::string checkGoal(const std::string& text) {
  if (CoverageGoal::parse(text)) return {};
  return fmt::format("\"{}\" is no percentage from 0 to 100 with at most one decimal", text);
}

// What was found in all kernels of a file.
struct CoveredKernels {
  CoverageSummary summary;
  std::optional<consolidated::Fault> fault;  // that ends the reading early
};

CoveredKernels reportKernels(const File& file, const LineTables& tables, CoverageReport& report) {
  CoveredKernels found;
  PairBudget budget;
  auto kernel = file.kernels().begin();
  for (; kernel != consolidated::KernelIterator(); ++kernel) {
    const KernelCoverage coverage(*kernel);
    found.summary.add(coverage);
    const PairTexts texts = PairTexts::of(*kernel);
    const bool listsNames = budget.spend(*kernel, texts.instances * texts.nameBytes);
    report.add({*kernel, coverage, ConditionCounts::of(*kernel, tables), listsNames});
  }
  found.fault = kernel.fault();
  return found;
}

CoverageLosses::Outcome reportLosses(const File& before, const File& after,
                                     CoverageReport& report) {
  report.beginLosses();
  const auto outcome =
      CoverageLosses(before, after).report([&](const CoverageLoss& loss) { report.add(loss); });
  report.endLosses(outcome);
  return outcome;
}

void sayProblem(Console& console, const std::string& path, const LineTables& tables) {
  if (tables.problem().empty()) return;
  const std::string_view what =
      tables.state() == LineTableState::Read ? "not all of the DWARF" : "no DWARF";
  console.messages.say(
      fmt::format("{}: {} can be read: {}", plain(path), what, plain(tables.problem())));
}

}  // namespace

void CoverageCommand::declare(Options& options) {
  options
      .option("--fail-under", goals_,
              "Fail where fewer percent of the variables (or arguments) of all instances have "
              "locations without a gap, as printed: rounded to one decimal, but 100.0 only for "
              "all of them")
      .placeholder("[arguments=|variables=]N")
      .check(checkGoal);
  options
      .option("--baseline", baseline_,
              "Tell which variables and arguments have lost locations since this file, and "
              "fail if any has")
      .placeholder("OLD");
  declareFormat(options);
  options.input(path_);
  options.footer(
      "The width of a register is not stored in a file: bits that are missing at its top cannot be "
      "seen, only gaps below.");
}

Status CoverageCommand::run(Console& console) {
  const auto input = openOnlyFile(console, path_);
  if (!input) return Status::Unasked;
  std::optional<ConsolidatedInput> baseline;
  if (baseline_) {
    baseline = openOnlyFile(console, *baseline_);
    if (!baseline) return Status::Unasked;
  }
  return answer(console, *input, baseline);
}

Status CoverageCommand::answer(Console& console, const ConsolidatedInput& input,
                               const std::optional<ConsolidatedInput>& baseline) const {
  const LineTables tables = LineTables::of(input.file());
  sayProblem(console, path_, tables);
  const auto report = makeReport(console, tables.state());
  const CoveredKernels found = reportKernels(input.file(), tables, *report);
  report->add(found.summary);
  bool holds = reachesGoals(console, found.summary) && !found.fault;
  sayIncomplete(console, input, found.fault);
  if (baseline) {
    const auto outcome = reportLosses(baseline->file(), input.file(), *report);
    if (!found.fault) sayIncomplete(console, input, outcome.whyAfterIncomplete);
    sayIncomplete(console, *baseline, outcome.whyBeforeIncomplete);
    holds = outcome.holds() && holds;
  }
  report->end(!found.fault && !input.wasCut());
  const Status status = statusOf(console, input, holds);
  return baseline ? worse(status, statusOf(console, *baseline, holds)) : status;
}

std::unique_ptr<CoverageReport> CoverageCommand::makeReport(Console& console,
                                                            LineTableState dwarf) const {
  if (!writesDocument()) return std::make_unique<CoverageText>(console, dwarf);
  return std::make_unique<CoverageDocument>(console.out, documentFormat(), dwarf);
}

bool CoverageCommand::reachesGoals(Console& console, const CoverageSummary& summary) const {
  bool reachesAll = true;
  for (const std::string& text : goals_) {
    const auto goal = CoverageGoal::parse(text);
    const auto percent = summary.percent(goal->kind);
    if (percent && !(*percent < goal->least)) continue;
    reachesAll = false;
    const std::string found =
        percent ? fmt::format("{} % of the {}s have locations without a gap", percent->text(),
                              nameOf(goal->kind))
                : fmt::format("there are no {}s in any instance", nameOf(goal->kind));
    console.messages.say(
        fmt::format("{}: {}; wanted: {} %", plain(path_), found, goal->least.text()));
  }
  return reachesAll;
}

}  // namespace consolidator::inspect
