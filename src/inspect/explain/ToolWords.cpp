#include "inspect/explain/ToolWords.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

namespace consolidator::inspect {

void declareToolWords(CLI::App& app, std::vector<std::string>& words) {
  // Of the tool, -h is an option that names an input.
  app.set_help_flag("--help", "Print this help message and exit");
  app.allow_extras();
  app.footer(
      fmt::format("After \"--\" stand the options of consolidator:\n"
                  "  {} [OPTIONS] -- -f FILE -k kernel.xml ...",
                  app.get_name()));
  app.callback([&app, &words] {
    words = app.remaining();
    if (words.empty() || words.front() != "--") {
      throw CLI::ValidationError("the command line of consolidator has to follow \"--\"");
    }
    words.erase(words.begin());
  });
}

}  // namespace consolidator::inspect
