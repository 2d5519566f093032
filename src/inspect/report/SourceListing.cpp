#include "inspect/report/SourceListing.h"

#include "inspect/report/PageParts.h"

#include <algorithm>
#include <optional>
#include <string_view>

namespace consolidator::inspect {

namespace {

using consolidated::BreakableCondition;
using consolidated::ConditionKind;

// How many lines are shown before and after one.
constexpr std::uint32_t around = 3;

}  // namespace

SourceListing::SourceListing(const consolidated::File& file, const std::string& folder)
    : tables_(folder.empty() ? LineTables(SourceLines()) : LineTables::of(file)), folder_(folder) {}

void SourceListing::write(HtmlWriter& html,
                          const consolidated::List<BreakableCondition>& conditions) {
  std::map<std::string, Marked> files;
  for (const BreakableCondition& condition : conditions) collect(condition, files);
  for (const auto& [path, file] : files) writeFile(html, path, file);
}

void SourceListing::collect(const BreakableCondition& condition,
                            std::map<std::string, Marked>& files) {
  if (condition.kind() != ConditionKind::SourceLine) return;
  const auto path = tables_.pathOf(condition.file().view(), condition.line());
  if (!path) return;
  const SourceText* const lines = folder_.linesOf(std::string(*path));
  if (lines == nullptr || condition.line() == 0 || condition.line() > lines->size()) return;
  Marked& file = files[std::string(*path)];
  file.lines = lines;
  file.conditions[condition.line()].push_back(condition.condition());
}

void SourceListing::writeFile(HtmlWriter& html, const std::string& path, const Marked& file) {
  html.add(part::sourceBegin, path);
  const auto count = static_cast<std::uint32_t>(file.lines->size());
  std::uint32_t next = 1;  // the first line that was not written
  for (const auto& [line, conditions] : file.conditions) {
    const std::uint32_t first = std::max(next, line - std::min(line - 1, around));
    const std::uint32_t last = std::min(line + around, count);
    if (first > next && next > 1) html.add(part::sourceGap);
    for (next = first; next <= last; ++next) writeLine(html, file, next);
  }
  html.add(part::sourceEnd);
}

void SourceListing::writeLine(HtmlWriter& html, const Marked& file, std::uint32_t line) {
  if (linesLeft_ == 0) return;
  --linesLeft_;
  const std::string_view text = (*file.lines)[line - 1];
  const auto conditions = file.conditions.find(line);
  if (conditions == file.conditions.end()) {
    html.add(part::sourceLine, line, text);
    return;
  }
  html.add(part::sourceLineBegin, line, text);
  for (const consolidated::Text& condition : conditions->second) {
    html.add(part::sourceCondition, condition);
  }
  html.add(part::sourceLineEnd);
}

}  // namespace consolidator::inspect
