#include "inspect/explain/ToolWords.h"

#include <fmt/format.h>

namespace consolidator::inspect {

void declareToolWords(Options& options, std::vector<std::string>& words) {
  options.footer(
      fmt::format("After \"--\" stand the options of consolidator:\n"
                  "  {} [OPTIONS] -- -f FILE -k kernel.xml ...",
                  options.name()));
  options.rest(words, "the command line of consolidator has to follow \"--\"");
}

}  // namespace consolidator::inspect
