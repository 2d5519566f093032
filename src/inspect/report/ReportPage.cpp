#include "inspect/report/ReportPage.h"

#include "inspect/coverage/Percent.h"
#include "inspect/report/FindingTable.h"
#include "inspect/report/KernelSection.h"
#include "inspect/report/PageParts.h"
#include "inspect/report/PageText.h"
#include "inspect/report/SectionPicture.h"
#include "inspect/verify/Verification.h"

#include <fmt/format.h>

#include <string_view>
#include <utility>

namespace consolidator::inspect {

namespace {

using consolidated::File;

// More of them are folded, so that the page can be overlooked.
constexpr std::uint64_t mostOpenKernels = 12;

std::string_view lastPartOf(std::string_view path) {
  if (path == "-") return "standard input";
  return path.substr(path.rfind('/') + 1);
}

Findings findingsIn(const File& file) {
  Findings findings;
  Verification(file, findings).run({});
  return findings;
}

std::string dwarfOf(const File& file) {
  const auto dwarf = file.dwarf();
  return dwarf ? counted(dwarf->stored().size(), "byte") : "none";
}

// Of the pairs of a name and an instance; a gap is no location for a debugger.
std::string shareLocated(const CoverageCounts& counts) {
  if (counts.total() == 0) return {};
  return Percent::of(counts[CoverageState::WithoutGap], counts.total()).text() + " % located";
}

}  // namespace

ReportPage::ReportPage(const ConsolidatedInput& input, std::string version)
    : input_(&input),
      version_(std::move(version)),
      survey_(input.file()),
      findings_(findingsIn(input.file())) {}

void ReportPage::write(HtmlWriter& html, SourceListing& sources) const {
  html.add(part::head, version_, lastPartOf(input_->path()));
  html.add(part::styleBegin).add(pageStyle).add(part::styleEnd).add(part::bodyBegin);
  writeContents(html);
  writeOverview(html);
  writeFindingTable(html, findings_);
  writeSectionPicture(html, input_->file());
  writeInstances(html);
  html.add(part::map).add(part::sectionEnd);
  writeKernels(html, sources);
  html.add(part::bodyEnd, version_);
  html.add(part::scriptBegin).add(pageScript).add(part::scriptEnd);
}

void ReportPage::writeContents(HtmlWriter& html) const {
  html.add(part::contentsBegin);
  std::uint64_t number = 0;
  for (const std::string& name : survey_.names) html.add(part::contentsKernel, number++, name);
  if (survey_.kernels > number) html.add(part::contentsMore, grouped(survey_.kernels - number));
  html.add(part::contentsEnd);
}

void ReportPage::writeOverview(HtmlWriter& html) const {
  html.add(part::title, lastPartOf(input_->path()), input_->path());
  writeVerdict(html);
  if (survey_.fault) {
    html.add(part::notComplete, survey_.fault->sentence(),
             fmt::format("at {:#x}", survey_.fault->offset));
  }
  const File& file = input_->file();
  const std::string version = fmt::format("{}.{}", file.majorVersion(), file.minorVersion());
  if (file.majorVersion() > 1) html.add(part::newerVersion, version);
  writeFacts(html);
}

void ReportPage::writeVerdict(HtmlWriter& html) const {
  html.add(findings_.hasError({}) ? part::verdictUnsound : part::verdictSound, countsOf(findings_));
}

void ReportPage::writeFacts(HtmlWriter& html) const {
  const File& file = input_->file();
  const KernelCounts& counts = survey_.counts;
  html.add(part::factsBegin);
  const auto project = file.project();
  if (project) {
    html.add(part::projectFact, *project);
  } else {
    html.add(part::fact, "Project", "none");
  }
  html.add(part::fact, "Kernels", grouped(survey_.kernels));
  html.add(part::fact, "Instances", grouped(counts.instancePaths));
  html.add(part::factWithNote, "Arguments and variables",
           grouped(counts.arguments + counts.variables), shareLocated(survey_.coverage));
  html.add(part::fact, "Registers", grouped(counts.hardwareVariables));
  html.add(part::fact, "Locations of bits", grouped(counts.logicLocations));
  html.add(part::fact, "Breakable conditions", grouped(counts.breakableConditions));
  html.add(part::fact, "DWARF", dwarfOf(file));
  html.add(part::factsEnd);
}

void ReportPage::writeInstances(HtmlWriter& html) const {
  html.add(part::instancesBegin);
  if (survey_.tree.size() == 0) {
    html.add(part::instancesNone);
  } else {
    if (survey_.counts.instancePaths > survey_.tree.size()) {
      html.add(part::instancesMore, grouped(survey_.tree.size()),
               grouped(survey_.counts.instancePaths));
    }
    survey_.tree.write(html);
  }
  html.add(part::sectionEnd);
}

void ReportPage::writeKernels(HtmlWriter& html, SourceListing& sources) const {
  html.add(part::kernelsBegin);
  if (survey_.kernels == 0) html.add(part::kernelsNone);
  KernelSection section(html, sources, survey_.kernels <= mostOpenKernels);
  std::uint64_t number = 0;
  for (const auto& kernel : input_->file().kernels()) section.write(kernel, number++);
}

}  // namespace consolidator::inspect
