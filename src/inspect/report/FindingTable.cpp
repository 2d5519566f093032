#include "inspect/report/FindingTable.h"

#include "inspect/report/PageParts.h"
#include "inspect/report/PageText.h"
#include "inspect/verify/FindingCode.h"

#include <fmt/format.h>

#include <cstdint>
#include <string_view>

namespace consolidator::inspect {

namespace {

template <typename Visit>
void forEachFoundCode(const Findings& findings, Visit visit) {
  for (std::size_t i = 0; i < findingCodeCount; ++i) {
    const auto code = static_cast<FindingCode>(i);
    if (findings.count(code) > 0) visit(code);
  }
}

std::uint64_t countOf(const Findings& findings, Severity severity) {
  std::uint64_t count = 0;
  forEachFoundCode(findings, [&](FindingCode code) {
    if (severityOf(code) == severity) count += findings.count(code);
  });
  return count;
}

void writeRow(HtmlWriter& html, const Finding& finding) {
  const std::string_view severity = nameOf(severityOf(finding.code));
  const std::string kernel =
      finding.kernel ? fmt::format("(kernel “{}”)", kernelNameOf(finding)) : "";
  const std::string place = finding.offset ? fmt::format("{:#x}", *finding.offset) : "";
  html.add(part::finding, severity, severity, sentenceOf(finding), kernel, place,
           nameOf(finding.code));
}

void writeRows(HtmlWriter& html, const Findings& findings, FindingCode code) {
  for (const Finding& finding : findings.list(code)) writeRow(html, finding);
  const std::uint64_t left = findings.count(code) - findings.list(code).size();
  if (left > 0) html.add(part::findingsMore, grouped(left), nameOf(code));
}

}  // namespace

std::string countsOf(const Findings& findings) {
  return fmt::format("{}, {}, {}", counted(countOf(findings, Severity::Error), "error"),
                     counted(countOf(findings, Severity::Warning), "warning"),
                     counted(countOf(findings, Severity::Note), "note"));
}

void writeFindingTable(HtmlWriter& html, const Findings& findings) {
  bool isEmpty = true;
  html.add(part::findingsBegin);
  forEachFoundCode(findings, [&](FindingCode code) {
    if (isEmpty) html.add(part::findingsTable);
    isEmpty = false;
    writeRows(html, findings, code);
  });
  html.add(isEmpty ? part::noFindings : part::findingsTableEnd);
  html.add(part::sectionEnd);
}

}  // namespace consolidator::inspect
