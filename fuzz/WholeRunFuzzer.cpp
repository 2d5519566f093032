// One run of the tool from its command line to its status, on a consolidated file and on inputs of
// every kind; see RunCommand for how they are told apart. Status, messages and files must be those
// of a run put together from plain readers; and what was saved can be dumped and saved again, which
// changes nothing but the texts of conditions.

#include "../tests/support/MemoryFile.h"
#include "../tests/support/PiecewisePipe.h"
#include "../tests/support/StreamCapture.h"
#include "../tests/support/TemporaryFolder.h"
#include "PlainRun.h"
#include "Require.h"
#include "RunCommand.h"
#include "StableSave.h"
#include "consolidated/ConsolidatedFile.h"
#include "driver/Driver.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <deque>
#include <filesystem>
#include <string>
#include <vector>

namespace consolidator {

namespace {

// The files of a run. They stay in memory from one run to the next, under names that are those of
// kernels: the debug metadata of high-level synthesis names its kernel that way.
class Workspace {
 public:
  Workspace() {
    for (std::size_t i = 0; i < files_.size(); ++i) {
      std::filesystem::create_symlink(files_[i].path(), pathOf(i));
    }
  }

  const MemoryFile& file(std::size_t i) const { return files_[i]; }

  std::string pathOf(std::size_t i) const {
    constexpr std::array<const char*, RunCommand::mostFiles> names = {
        "vadd.dbg", "scale.dbg", "fir.dbg", "k.dbg", "a.b", "x.dbg", "vadd.xml", "dbg"};
    return folder_.path(names[i]);
  }

  const MemoryFile& stored() const { return stored_; }

  std::string missing() const { return folder_.path("missing/file"); }

 private:
  TemporaryFolder folder_;
  std::array<MemoryFile, RunCommand::mostFiles> files_;
  MemoryFile stored_;
};

const Workspace& workspace() {
  static const Workspace workspace;
  return workspace;
}

// The pipes of a run.
using Pipes = std::deque<PiecewisePipe>;

// The first byte says how long the pieces are; what no pipe takes is put into a file.
std::string pathOf(RunFile& file, std::size_t number, Pipes& pipes) {
  constexpr std::size_t longest = PiecewisePipe::mostPieces * PiecewisePipe::largestPiece / 2;
  if (file.place == RunFile::Place::Itself) return workspace().stored().path();
  if (file.place == RunFile::Place::Missing) return workspace().missing();
  if (file.place == RunFile::Place::Pipe && file.text.size() <= longest) {
    const std::size_t size = file.text.empty() ? 0 : static_cast<unsigned char>(file.text[0]);
    return pipes.emplace_back(pieces(file.text, size + 1)).path();
  }
  file.place = RunFile::Place::File;
  workspace().file(number).write(file.text);
  return workspace().pathOf(number);
}

void putInPlace(RunCommand& run, Pipes& pipes) {
  workspace().stored().write(run.stored);
  run.path = run.has('n') ? workspace().missing() : workspace().stored().path();
  for (std::size_t i = 0; i < run.files.size(); ++i) {
    run.files[i].path = pathOf(run.files[i], i, pipes);
  }
}

struct Outcome {
  int status;
  std::string out;
  std::string err;
};

Outcome runTool(const std::vector<std::string>& arguments) {
  std::vector<const char*> argv{"consolidator"};
  for (const std::string& argument : arguments) argv.push_back(argument.c_str());
  const StreamCapture capture;
  ConsolidatedFile file;
  const int status = runConsolidation(static_cast<int>(argv.size()), argv.data(), file);
  return {status, capture.out(), capture.err()};
}

void requireSilence(const Outcome& outcome) {
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

void requirePlainOutcome(const RunCommand& run, const Outcome& outcome) {
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
  const Outcome outcome = runTool(run.arguments());
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
