#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace consolidator::inspect {

/// Declares that the command line of the tool follows "--", and where its words go. They are not
/// for the parser of this command line, which would look into some.
void declareToolWords(CLI::App& app, std::vector<std::string>& words);

}  // namespace consolidator::inspect
