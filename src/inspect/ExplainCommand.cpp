#include "inspect/ExplainCommand.h"

#include "inspect/ExplainDocument.h"
#include "inspect/ExplainText.h"
#include "inspect/ExplainedRun.h"
#include "inspect/JsonDocument.h"

#include <CLI/CLI.hpp>

#include <algorithm>

namespace consolidator::inspect {

namespace {

constexpr std::string_view strictAlone = "true";  // what a flag without a value has
constexpr std::string_view strictNothing = "nothing";

// The words after "--". They are not for the parser of this command line: it would look into some.
std::vector<std::string> toolWords(const CLI::App& app) {
  std::vector<std::string> words = app.remaining();
  if (words.empty() || words.front() != "--") {
    throw CLI::ValidationError("the command line of consolidator has to follow \"--\"");
  }
  words.erase(words.begin());
  return words;
}

}  // namespace

void ExplainCommand::declare(CLI::App& app) {
  declareFormat(app);
  // Of the tool it is an option that names an input.
  app.set_help_flag("--help", "Print this help message and exit");
  app.add_flag("--strict", strict_,
               "Status 1 for skipped and refused inputs, losses, a status other than 0 and a usage "
               "text; with \"=nothing\" also for inputs that give nothing")
      ->option_text("[=nothing]")
      ->check(CLI::IsMember({strictAlone, strictNothing}));
  app.allow_extras();
  app.footer(
      "After \"--\" stand the options of consolidator:\n"
      "  consolidator-inspect explain [OPTIONS] -- -f FILE -k kernel.xml ...");
  app.callback([this, &app] { words_ = toolWords(app); });
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
  if (strict_.empty()) return false;
  if (explanation.status != 0 || explanation.isUsage || !explanation.losses.empty()) return true;
  return std::ranges::any_of(explanation.inputs, [&](const ExplainedInput& input) {
    const bool gaveNothing =
        input.outcome == InputOutcome::Nothing && input.kind != InputKind::RamReport;
    return input.outcome == InputOutcome::Skipped || input.outcome == InputOutcome::Refused ||
           (strict_ == strictNothing && gaveNothing);
  });
}

}  // namespace consolidator::inspect
