// One run of the tool from its command line to its status, on a consolidated file and on inputs of
// every kind; see RunCommand for how they are told apart. Status, messages and files must be those
// of a run put together from plain readers; and what was saved can be dumped and saved again, which
// changes nothing but the texts of conditions.

#include "../tests/support/MemoryFile.h"
#include "PlainRun.h"
#include "Require.h"
#include "RunCommand.h"
#include "RunWorkspace.h"
#include "StableSave.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

namespace consolidator {

namespace {

void requireSilence(const ToolOutcome& outcome) {
  require(outcome.status == EXIT_SUCCESS, "the run succeeds");
  require(outcome.out.empty() && outcome.err.empty(), "the run prints nothing");
}

void requireOtherFilesUntouched(const RunCommand& run) {
  for (std::size_t i = 0; i < run.files.size(); ++i) {
    if (run.files[i].place != RunFile::Place::File || &run.files[i] == run.dump()) continue;
    require(workspace().file(i).read() == run.files[i].text, "inputs are read only");
  }
}

void requirePlainDump(const RunCommand& run, const std::string& dumped) {
  for (std::size_t i = 0; i < run.files.size(); ++i) {
    if (run.files[i].place != RunFile::Place::File || &run.files[i] != run.dump()) continue;
    require(workspace().file(i).read() == dumped, "the dump is that of a plain reader");
  }
}

void requirePlainOutcome(const RunCommand& run, const ToolOutcome& outcome) {
  const PlainRun plain(run);
  require(outcome.status == plain.status, "the status is that of a plain run");
  require(outcome.out.empty(), "nothing is printed on standard output");
  require(outcome.err == plain.messages, "the messages are those of a plain run");
  require(plain.messages.empty() || plain.messages.back() == '\n', "messages are whole lines");
  require(workspace().stored().read() == plain.stored, "the file is that of a plain run");
  requirePlainDump(run, plain.dumped);
}

void requireDumps(const std::string& saved) {
  const PlainContainer plain(saved);
  const std::string path = workspace().stored().path();
  const MemoryFile dump;
  requireSilence(runTool({"-f", path, "-j", dump.path()}));
  require(dump.read() == plain.dump(SectionKind::Json), "the JSON text can be dumped");
  requireSilence(runTool({"-f", path, "-u", dump.path()}));
  require(dump.read() == plain.dump(SectionKind::Dwarf), "the DWARF bytes can be dumped");
  require(workspace().stored().read() == saved, "dumping does not change the file");
}

void requireStableSave(const std::string& saved) {
  requireSilence(runTool({"-f", workspace().stored().path(), "-r", workspace().missing()}));
  const std::string again = workspace().stored().read();
  require(again == PlainContainer(saved).save(), "the second save is that of a plain writer");
  requireStable(saved, again);
}

void requirePlainRun(RunCommand& run) {
  Pipes pipes;
  putInPlace(run, pipes);
  const ToolOutcome outcome = runTool(run.arguments());
  requireOtherFilesUntouched(run);
  if (!run.opensTheFile()) {
    require(outcome.status == EXIT_SUCCESS && outcome.err.empty(), "a question succeeds");
    require(outcome.out.ends_with('\n'), "an answer is whole lines");
    require(workspace().stored().read() == run.stored, "a question changes nothing");
    return;
  }
  requirePlainOutcome(run, outcome);
  if (outcome.status != EXIT_SUCCESS || run.dump() != nullptr) return;
  const std::string saved = workspace().stored().read();
  requireDumps(saved);
  requireStableSave(saved);
}

}  // namespace

}  // namespace consolidator

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string input(data, data + size);
  if (consolidator::holdsLargeIndex(input)) return 0;
  consolidator::RunCommand run(input);
  consolidator::requirePlainRun(run);
  return 0;
}
