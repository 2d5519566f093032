#include "inspect/run/RunCommand.h"

#include "driver/Process.h"
#include "inspect/explain/ExplainDocument.h"
#include "inspect/explain/ToolWords.h"
#include "inspect/output/JsonDocument.h"
#include "inspect/output/PlainText.h"

#include <fmt/format.h>

#include <algorithm>

namespace consolidator::inspect {

namespace {

std::string checkCode(const std::string& code) {
  return isAllowable(code) ? std::string() : fmt::format("there is no code \"{}\"", code);
}

// Calls `take` for each line of a text of the tool, made plain.
template <typename Take>
void forEachLine(std::string_view text, Take take) {
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    take(plain(text.substr(0, end)));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
}

}  // namespace

void RunCommand::declare(Options& options) {
  declareFormat(options);
  options
      .option("--allow", rules_.strict.allowed,
              "Do the run in spite of these outcomes of inputs (skipped, refused) and codes of "
              "losses, as \"explain\" tells them")
      .placeholder("CODE,...")
      .separator(',')
      .check(checkCode);
  options.flag("--keep-if-equal", rules_.keepsEqual,
               "Leave the file and its time alone where \"diff\" would call the result equal");
  options.flag("--quiet", isQuiet_, "Print no summary");
  declareToolWords(options, words_);
}

Status RunCommand::run(Console& console) {
  prepareHeap();
  const ToolLine line(words_);
  const RunResult result = SafeRun(line, rules_, writesDocument() ? nullptr : &console.out).run();
  writesDocument() ? writeDocument(console, result) : writeText(console, result);
  forEachLine(result.explanation.err, [&](const std::string& said) { console.messages.say(said); });
  for (const std::string& message : result.messages) console.messages.say(plain(message));
  return result.status;
}

void RunCommand::writeDocument(Console& console, const RunResult& result) const {
  if (!result.refusalCode.empty()) {
    return writeErrorDocument(console.out, documentFormat(), result.refusalCode, result.reason);
  }
  JsonDocument document(console.out);
  document.beginObject().member("format", documentFormat());
  writeMembers(document, result.explanation);
  document.member("done", result.isDone).key("reason");
  result.reason.empty() ? document.null() : document.value(result.reason);
  document.endObject().end();
}

void RunCommand::writeText(Console& console, const RunResult& result) const {
  forEachLine(result.explanation.out, [&](const std::string& line) {
    console.out.write(line);
    console.out.put('\n');
  });
  if (isQuiet_ || result.summary.empty()) return;
  console.out.write(plain(result.summary) + "\n");
}

}  // namespace consolidator::inspect
