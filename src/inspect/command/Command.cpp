#include "inspect/command/Command.h"

#include "inspect/files/SameFile.h"
#include "inspect/output/JsonDocument.h"
#include "inspect/output/PlainText.h"

#include <fmt/format.h>
#include <unistd.h>

#include <utility>
#include <variant>

namespace consolidator::inspect {

namespace {

void warnOfVersion(Console& console, const ConsolidatedInput& input) {
  if (input.file().majorVersion() < 2) return;
  console.messages.say(
      fmt::format("{}: written by a newer version ({}.{}); consolidator refuses it",
                  plain(input.path()), input.file().majorVersion(), input.file().minorVersion()));
}

}  // namespace

void Command::declareFormat(Options& options) {
  options.option("--format", format_, R"("text" for people or "json" for programs)")
      .placeholder("text|json")
      .among({"text", "json"});
}

std::optional<ConsolidatedInput> Command::openOnlyFile(Console& console,
                                                       const std::string& path) const {
  std::variant<ConsolidatedInput, InputProblem> opened = ConsolidatedInput::open(path);
  if (const auto* const problem = std::get_if<InputProblem>(&opened)) {
    console.messages.say(problem->message);
    if (writesDocument()) {
      writeErrorDocument(console.out, documentFormat(), problem->code, problem->message);
    }
    return std::nullopt;
  }
  std::optional<ConsolidatedInput> input = std::get<ConsolidatedInput>(std::move(opened));
  warnOfVersion(console, *input);
  return input;
}

bool Command::isInput(Console& console, const std::string& output, const std::string& path) {
  if (output == "-") return false;
  if (!(path == "-" ? isSameFile(output, STDIN_FILENO) : isSameFile(output, path))) return false;
  console.messages.say(fmt::format("{}: is an input, so it cannot be the output", plain(output)));
  return true;
}

void Command::sayIncomplete(Console& console, const ConsolidatedInput& input,
                            std::string_view why) {
  if (why.empty() || input.wasCut()) return;
  console.messages.say(fmt::format("{}: not complete: {}", plain(input.path()), why));
}

void Command::sayIncomplete(Console& console, const ConsolidatedInput& input,
                            const std::optional<consolidated::Fault>& fault) {
  if (fault) sayIncomplete(console, input, fault->sentence());
}

Status Command::statusOf(Console& console, const ConsolidatedInput& input, bool isComplete) {
  if (input.wasCut()) {
    console.messages.say(fmt::format("{}: cut while it was read", plain(input.path())));
    return Status::Unasked;
  }
  return isComplete ? Status::Holds : Status::Fails;
}

void writeErrorDocument(OutputSink& out, std::string_view format, std::string_view code,
                        std::string_view message) {
  JsonDocument document(out);
  document.beginObject().member("format", format).key("error");
  document.beginObject().member("code", code).member("message", message).endObject();
  document.endObject().end();
}

}  // namespace consolidator::inspect
