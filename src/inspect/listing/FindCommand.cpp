#include "inspect/listing/FindCommand.h"

#include "inspect/listing/FindDocument.h"
#include "inspect/listing/FindText.h"
#include "inspect/listing/KernelFinder.h"
#include "inspect/output/JsonDocument.h"
#include "inspect/output/PlainText.h"
#include "inspect/output/Utf8.h"

#include <fmt/format.h>

namespace consolidator::inspect {

namespace {

void writeQuery(JsonDocument& document, const FindQuery& query) {
  document.key("query").beginObject();
  if (const auto& location = query.location()) {
    document.key("location").beginArray();
    document.value(location->first).value(location->second).endArray();
  } else {
    document.member("name", wellFormed(query.text()));  // no text of the file
  }
  document.endObject();
}

}  // namespace

void FindCommand::declare(Options& options) {
  declareFormat(options);
  options.input(path_);
  options
      .option("NAME", wanted_,
              "A kernel, a variable, a register with its hierarchical name or without, or a "
              "location as two numbers, such as 0x1A2F:77 (0:0 is often one that is not known)")
      .required()
      .placeholder("NAME|FIRST:SECOND");
}

Status FindCommand::run(Console& console) {
  const auto input = openOnlyFile(console, path_);
  if (!input) return Status::Unasked;
  const FindQuery query(wanted_);
  FindText text(console);
  const Outcome outcome =
      writesDocument() ? writeDocument(console, *input, query) : find(*input, query, text);
  if (outcome.count == 0) {
    const std::string_view where = query.location() ? "nothing is at" : "there is no";
    console.messages.say(fmt::format("{}: {} \"{}\"", plain(path_), where, plain(wanted_)));
  }
  sayIncomplete(console, *input, outcome.fault);
  return statusOf(console, *input, !outcome.fault && outcome.count > 0);
}

FindCommand::Outcome FindCommand::find(const ConsolidatedInput& input, const FindQuery& query,
                                       FindReport& report) {
  Outcome outcome;
  auto kernel = input.file().kernels().begin();
  for (; kernel != consolidated::KernelIterator(); ++kernel) {
    const consolidated::Kernel current = *kernel;
    outcome.count += KernelFinder(current, query, report).find();
  }
  outcome.fault = kernel.fault();
  return outcome;
}

FindCommand::Outcome FindCommand::writeDocument(Console& console, const ConsolidatedInput& input,
                                                const FindQuery& query) const {
  JsonDocument document(console.out);
  document.beginObject().member("format", documentFormat());
  document.member("path", wellFormed(path_));  // no text of the file
  writeQuery(document, query);
  document.key("kernels").beginArray();
  FindDocument report(document);
  const Outcome outcome = find(input, query, report);
  document.endArray().member("matches", outcome.count);
  document.member("complete", !outcome.fault && !input.wasCut());
  document.member("lossy_texts", document.lossyTexts()).endObject().end();
  return outcome;
}

}  // namespace consolidator::inspect
