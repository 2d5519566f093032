#include "inspect/diff/DiffCommand.h"

#include "inspect/diff/JsonChanges.h"
#include "inspect/diff/TextChanges.h"
#include "inspect/output/JsonDocument.h"

namespace consolidator::inspect {

void DiffCommand::declare(Options& options) {
  options.flag("--exact", isExact_,
               "Compare the texts of conditions; without it, the order of the two operands of an "
               "operator, which each save swaps, does not count");
  options.flag("--sections", withSections_,
               "Compare the section tables and the bytes of the sections, too");
  options.flag("--stat", isSummaryAlone_, "Write the summary alone");
  declareFormat(options);
  options.option("A", before_, "The file before, or \"-\" for standard input").required();
  options.option("B", after_, "The file after, or \"-\" for standard input").required();
  options.footer(
      "Status: 0 if the files are equal, 1 if not. A file that is not complete equals only one "
      "with the same bytes, and its status is 1 even then.");
}

Status DiffCommand::run(Console& console) {
  const auto before = openOnlyFile(console, before_);
  if (!before) return Status::Unasked;
  const auto after = openOnlyFile(console, after_);
  if (!after) return Status::Unasked;
  const auto match = isExact_ ? ConditionMatch::Exact : ConditionMatch::NormalForm;
  const FileComparison comparison(before->file(), after->file(), {match, withSections_});
  const ComparisonResult result = writesDocument()
                                      ? writeDocument(console, comparison, *before, *after)
                                      : writeText(console, comparison);
  sayIncomplete(console, *before, result.before.whyIncomplete);
  sayIncomplete(console, *after, result.after.whyIncomplete);
  const bool holds = result.isEqual && result.isComplete();
  return worse(statusOf(console, *before, holds), statusOf(console, *after, holds));
}

ComparisonResult DiffCommand::writeText(Console& console, const FileComparison& comparison) const {
  NoChanges none;
  TextChanges changes(console);
  ComparisonResult result =
      comparison.report(isSummaryAlone_ ? static_cast<ChangeSink&>(none) : changes);
  writeSummary(console, result);
  return result;
}

// Whether the files are equal stands in front of the changes, so they are compared twice.
ComparisonResult DiffCommand::writeDocument(Console& console, const FileComparison& comparison,
                                            const ConsolidatedInput& before,
                                            const ConsolidatedInput& after) const {
  NoChanges none;
  ComparisonResult result = comparison.report(none);
  const auto isCut = [&] { return before.wasCut() || after.wasCut(); };
  JsonDocument document(console.out);
  document.beginObject();
  document.member("format", documentFormat());
  document.member("equal", result.isEqual && !isCut());
  document.key("counts");
  writeItem(document, result);
  if (!isSummaryAlone_) {
    document.key("changes").beginArray();
    JsonChanges changes(document);
    if (result.changes > 0) comparison.report(changes);
    document.endArray();
  }
  document.member("complete", result.isComplete() && !isCut());
  document.member("lossy_texts", document.lossyTexts());
  document.endObject().end();
  return result;
}

}  // namespace consolidator::inspect
