#include "inspect/coverage/CoverageDocument.h"

#include <string>

namespace consolidator::inspect {

namespace {

std::string_view listKeyOf(VariableKind kind) {
  return kind == VariableKind::Argument ? "arguments" : "variables";
}

}  // namespace

CoverageDocument::CoverageDocument(OutputSink& out, std::string_view format, LineTableState dwarf)
    : document_(out), dwarf_(dwarf) {
  document_.beginObject().member("format", format).key("kernels").beginArray();
}

void CoverageDocument::add(const CoveredKernel& kernel) {
  document_.beginObject();
  document_.member("kernel", kernel.kernel.name().view());
  document_.key("instances").beginArray();
  std::uint32_t instance = 0;
  for (const consolidated::Text& path : kernel.kernel.instancePaths()) {
    if (instance == kernel.coverage.instances()) break;
    document_.beginObject();
    document_.member("path", path.view());
    const std::uint64_t lossyTexts = document_.lossyTexts();
    writeNames(kernel, VariableKind::Argument, instance);
    writeNames(kernel, VariableKind::Variable, instance);
    if (instance > 0) otherLossyTexts_ += document_.lossyTexts() - lossyTexts;
    document_.endObject();
    ++instance;
  }
  document_.endArray();
  writeConditions(kernel.conditions);
  if (!kernel.listsNames) document_.member("names_listed", false);
  if (!kernel.coverage.isAll()) document_.member("all_counted", false);
  document_.endObject();
}

void CoverageDocument::writeNames(const CoveredKernel& kernel, VariableKind kind,
                                  std::uint32_t instance) {
  document_.key(listKeyOf(kind)).beginObject();
  writeCounts(kernel.coverage.counts(kind, instance));
  document_.key("names").beginArray();
  const auto write = [&](const CoveredName& name, const BitCoverage& coverage) {
    document_.beginObject();
    document_.member("name", name.name);
    document_.member("register", name.registerName);
    writeBits(coverage);
    document_.endObject();
  };
  if (kernel.listsNames) kernel.coverage.forEach(kind, instance, write);
  document_.endArray().endObject();
}

void CoverageDocument::writeCounts(const CoverageCounts& counts) {
  document_.member("total", counts.total());
  for (const CoverageState state : {CoverageState::WithoutGap, CoverageState::WithGap,
                                    CoverageState::None, CoverageState::Doubtful}) {
    document_.member(nameOf(state), counts[state]);
  }
}

void CoverageDocument::writeBits(const BitCoverage& coverage) {
  document_.member("state", nameOf(coverage.state));
  document_.member("bits", coverage.bits);
  document_.member("highest", coverage.highest);
}

void CoverageDocument::writeConditions(const ConditionCounts& conditions) {
  document_.key("conditions").beginObject();
  document_.member("total", conditions.total);
  document_.member("well_formed", conditions.wellFormed);
  document_.member("source_lines", conditions.sourceLines);
  document_.key("in_line_table");
  dwarf_ == LineTableState::Read ? document_.value(conditions.inLineTable) : document_.null();
  document_.endObject();
}

void CoverageDocument::add(const CoverageSummary& summary) {
  document_.endArray();
  document_.key("total").beginObject();
  writeTotal(summary, VariableKind::Argument);
  writeTotal(summary, VariableKind::Variable);
  document_.endObject();
  document_.member("dwarf", nameOf(dwarf_));
}

void CoverageDocument::writeTotal(const CoverageSummary& summary, VariableKind kind) {
  document_.key(listKeyOf(kind)).beginObject();
  writeCounts(summary.counts(kind));
  document_.key("percent");
  const auto percent = summary.percent(kind);
  percent ? document_.decimal(percent->text()) : document_.null();
  document_.endObject();
}

void CoverageDocument::beginLosses() { document_.key("lost").beginArray(); }

void CoverageDocument::add(const CoverageLoss& loss) {
  const std::uint64_t lossyTexts = document_.lossyTexts();
  document_.beginObject();
  document_.member("kernel", loss.kernel);
  document_.member("instance", loss.instance);
  document_.member("what", nameOf(loss.kind));
  document_.member("name", loss.name);
  document_.member("register", loss.registerName);
  otherLossyTexts_ += document_.lossyTexts() - lossyTexts;
  document_.key("before").beginObject();
  writeBits(loss.before);
  document_.endObject().key("after");
  if (!loss.after) {
    document_.null().endObject();
    return;
  }
  document_.beginObject();
  writeBits(*loss.after);
  document_.endObject().endObject();
}

void CoverageDocument::endLosses(const CoverageLosses::Outcome& outcome) {
  document_.endArray();
  document_.member("not_compared", outcome.notCompared);
}

void CoverageDocument::end(bool isComplete) {
  document_.member("complete", isComplete);
  document_.member("lossy_texts", document_.lossyTexts() - otherLossyTexts_);
  document_.endObject().end();
}

}  // namespace consolidator::inspect
