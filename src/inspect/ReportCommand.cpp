#include "inspect/ReportCommand.h"

#include "inspect/CommandOutput.h"
#include "inspect/PlainText.h"
#include "inspect/ReportPage.h"
#include "inspect/SourceListing.h"

#include <CLI/CLI.hpp>

namespace consolidator::inspect {

void ReportCommand::declare(CLI::App& app) {
  app.add_option("FILE", path_, "The file, or \"-\" for standard input")->required();
  app.add_option("-o,--output", output_,
                 "Where to write the page; a file is replaced as a whole or not at all, \"-\" is "
                 "standard output")
      ->required()
      ->option_text("OUT.html");
  app.add_option("--source", sources_,
                 "Show conditions beside the lines of their source: of the files below this folder "
                 "that the DWARF names")
      ->option_text("DIR");
  app.footer(
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
  return output.finish(statusOf(console, *input, page.isComplete()), *input);
}

}  // namespace consolidator::inspect
