#include "inspect/Inspector.h"

#include "inspect/command/Command.h"
#include "inspect/command/Options.h"
#include "inspect/coverage/CoverageCommand.h"
#include "inspect/diff/DiffCommand.h"
#include "inspect/explain/ExplainCommand.h"
#include "inspect/listing/ExtractCommand.h"
#include "inspect/listing/FindCommand.h"
#include "inspect/listing/JsonCommand.h"
#include "inspect/listing/ShowCommand.h"
#include "inspect/output/PlainText.h"
#include "inspect/report/ReportCommand.h"
#include "inspect/run/RunCommand.h"
#include "inspect/sql/SqlCommand.h"
#include "inspect/verify/VerifyCommand.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <iterator>
#include <memory>
#include <string_view>
#include <system_error>

namespace consolidator::inspect {

namespace {

constexpr std::string_view programName = "consolidator-inspect";

struct CommandEntry {
  std::string_view name;
  std::string_view summary;
  std::unique_ptr<Command> (*make)();
};

template <typename T>
std::unique_ptr<Command> make() {
  return std::make_unique<T>();
}

constexpr std::array commands = {
    CommandEntry{"show", "show what is in a file", make<ShowCommand>},
    CommandEntry{"json", "write what is in a file as strict JSON", make<JsonCommand>},
    CommandEntry{"extract", "write the bytes of one section", make<ExtractCommand>},
    CommandEntry{"find", "find a variable, register, kernel or location", make<FindCommand>},
    CommandEntry{"verify", "say whether files are sound, and what is wrong", make<VerifyCommand>},
    CommandEntry{"diff", "tell how two files differ", make<DiffCommand>},
    CommandEntry{"coverage", "tell what of a file can be debugged", make<CoverageCommand>},
    CommandEntry{"explain", "say what a run of consolidator would do", make<ExplainCommand>},
    CommandEntry{"run", "run consolidator so that nothing is lost", make<RunCommand>},
    CommandEntry{"report", "write a page that shows what is in a file", make<ReportCommand>},
    CommandEntry{"sql", "write what is in files as an SQLite database", make<SqlCommand>},
};

std::string helpText() {
  std::string text = fmt::format(
      "Usage: {0} COMMAND [OPTION]... FILE...\n"
      "Shows, checks and compares consolidated files.\n\nCommands:\n",
      programName);
  for (const CommandEntry& entry : commands) {
    fmt::format_to(std::back_inserter(text), "  {:<10}{}\n", entry.name, entry.summary);
  }
  return text + fmt::format(
                    "\n\"{0} COMMAND --help\" tells more of each. FILE \"-\" is standard "
                    "input.\nStatus: 0 if what was asked holds, 1 if not, 2 if it could "
                    "not be asked.\n",
                    programName);
}

// Whether a command line asks for JSON; it need not be right in all else.
bool asksForDocument(const std::vector<std::string>& words) {
  const auto end = std::find(words.begin(), words.end(), "--");
  for (auto word = words.begin(); word != end; ++word) {
    if (*word == "--format=json") return true;
    if (*word == "--format" && std::next(word) != end && *std::next(word) == "json") return true;
  }
  return false;
}

Status refuse(Console& console, std::string_view reason) {
  console.messages.say(plain(reason));
  return Status::Unasked;
}

Status refuse(Console& console, const Command& command, const std::vector<std::string>& words,
              std::string_view reason) {
  const bool asks = command.alwaysWritesDocument() || asksForDocument(words);
  if (asks && !command.documentFormat().empty()) {
    writeErrorDocument(console.out, command.documentFormat(), "usage", reason);
  }
  return refuse(console, reason);
}

Status runCommand(const CommandEntry& entry, const std::vector<std::string>& words,
                  Console& console) {
  const std::unique_ptr<Command> command = entry.make();
  Options options(fmt::format("{} {}", programName, entry.name), std::string(entry.summary));
  command->declare(options);
  std::string text;
  switch (options.parse({std::next(words.begin()), words.end()}, text)) {
    case Options::Outcome::WantsHelp:
      console.out.write(text);
      return Status::Holds;
    case Options::Outcome::Wrong:
      return refuse(
          console, *command, words,
          fmt::format("{}: {} (see \"{} {} --help\")", entry.name, text, programName, entry.name));
    case Options::Outcome::Parsed:
      break;
  }
  return command->run(console);
}

Status runFirstWord(const std::vector<std::string>& words, Console& console) {
  if (words.empty()) {
    return refuse(console, fmt::format("a command is missing (see \"{} --help\")", programName));
  }
  if (words[0] == "--help" || words[0] == "-h") {
    console.out.write(helpText());
    return Status::Holds;
  }
  if (words[0] == "--version") {
    console.out.write(fmt::format("{} (consolidator) {}\n", programName, CONSOLIDATOR_VERSION));
    return Status::Holds;
  }
  const auto* const entry =
      std::find_if(commands.begin(), commands.end(),
                   [&](const CommandEntry& candidate) { return candidate.name == words[0]; });
  if (entry == commands.end()) {
    return refuse(console, fmt::format(R"(there is no command "{}" (see "{} --help"))", words[0],
                                       programName));
  }
  return runCommand(*entry, words, console);
}

}  // namespace

Status runInspector(const std::vector<std::string>& words, OutputSink& out, Messages& messages,
                    bool hasColour) {
  Console console{out, messages, hasColour};
  const Status status = runFirstWord(words, console);
  if (out.flush()) return status;
  if (out.error() != EPIPE) {
    messages.say("standard output: " + std::generic_category().message(out.error()));
  }
  return Status::Unasked;
}

}  // namespace consolidator::inspect
