#include "inspect/explain/ExplainCommand.h"

#include "inspect/explain/ExplainDocument.h"
#include "inspect/explain/ExplainText.h"
#include "inspect/explain/ExplainedRun.h"
#include "inspect/explain/Objections.h"
#include "inspect/explain/ToolWords.h"
#include "inspect/output/JsonDocument.h"

#include <fmt/format.h>

namespace consolidator::inspect {

namespace {

constexpr std::string_view strictAlone = "true";  // what a flag without a value has
constexpr std::string_view strictNothing = "nothing";

std::string checkStrictness(const std::string& what) {
  if (what == strictAlone || what == strictNothing) return {};
  return fmt::format("it cannot be strict about \"{}\"", what);
}

}  // namespace

void ExplainCommand::declare(Options& options) {
  declareFormat(options);
  options
      .flag("--strict", strict_,
            "Status 1 for skipped and refused inputs, losses, a status other than 0 and a usage "
            "text; with \"=nothing\" also for inputs that give nothing")
      .placeholder("[=nothing]")
      .check(checkStrictness);
  declareToolWords(options, words_);
}

Status ExplainCommand::run(Console& console) {
  const Explanation explanation = explainRun(words_);
  if (writesDocument()) {
    JsonDocument document(console.out);
    document.beginObject().member("format", documentFormat());
    writeMembers(document, explanation);
    document.endObject().end();
  } else {
    console.out.write(explainText(explanation));
  }
  return isObjected(explanation) ? Status::Fails : Status::Holds;
}

bool ExplainCommand::isObjected(const Explanation& explanation) const {
  const StrictRules rules{strict_ == strictNothing, {}};
  return !strict_.empty() && !objectionsTo(explanation, rules, {}).empty();
}

}  // namespace consolidator::inspect
