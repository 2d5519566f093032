#include "inspect/report/ReportCommand.h"

#include "inspect/command/CommandOutput.h"
#include "inspect/output/PlainText.h"
#include "inspect/report/ReportPage.h"
#include "inspect/report/SourceListing.h"

namespace consolidator::inspect {

void ReportCommand::declare(Options& options) {
  options.input(path_);
  options
      .option("-o,--output", output_,
              "Where to write the page; a file is replaced as a whole or not at all, \"-\" is "
              "standard output")
      .required()
      .placeholder("OUT.html");
  options
      .option("--source", sources_,
              "Show conditions beside the lines of their source: of the files below this folder "
              "that the DWARF names")
      .placeholder("DIR");
  options.footer(
      "The true width of a register is not stored, so bits missing at its top cannot be seen.");
}

Status ReportCommand::run(Console& console) {
  const auto input = openOnlyFile(console, path_);
  if (!input || isInput(console, output_, path_)) return Status::Unasked;
  const ReportPage page(*input, CONSOLIDATOR_VERSION);
  SourceListing sources(input->file(), sources_);
  if (!sources.problem().empty()) {
    console.messages.say(plain(path_) + ": DWARF: " + plain(sources.problem()));
  }
  CommandOutput output(console, output_);
  HtmlWriter html(output.sink());
  page.write(html, sources);
  sayIncomplete(console, *input, page.fault());
  return output.finish(statusOf(console, *input, !page.fault()), *input);
}

}  // namespace consolidator::inspect
