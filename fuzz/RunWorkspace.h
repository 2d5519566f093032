#pragma once

#include "../tests/support/MemoryFile.h"
#include "../tests/support/PiecewisePipe.h"
#include "../tests/support/StreamCapture.h"
#include "../tests/support/TemporaryFolder.h"
#include "RunCommand.h"
#include "consolidated/ConsolidatedFile.h"
#include "driver/Driver.h"

#include <array>
#include <cstddef>
#include <deque>
#include <filesystem>
#include <string>
#include <vector>

namespace consolidator {

/// The files of a run. They stay in memory from one run to the next, under names that are those of
/// kernels: the debug metadata of high-level synthesis names its kernel that way.
class RunWorkspace {
 public:
  RunWorkspace() {
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

inline const RunWorkspace& workspace() {
  static const RunWorkspace workspace;
  return workspace;
}

/// The pipes of a run.
using Pipes = std::deque<PiecewisePipe>;

/// Puts a file in place and returns its path. The first byte says how long the pieces of a pipe
/// are; what no pipe takes is put into a file.
inline std::string pathOf(RunFile& file, std::size_t number, Pipes& pipes) {
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

/// Puts all files of a run in place and sets their paths.
inline void putInPlace(RunCommand& run, Pipes& pipes) {
  workspace().stored().write(run.stored);
  run.path = run.has('n') ? workspace().missing() : workspace().stored().path();
  for (std::size_t i = 0; i < run.files.size(); ++i) {
    run.files[i].path = pathOf(run.files[i], i, pipes);
  }
}

/// How a run of the tool ended and what it printed.
struct ToolOutcome {
  int status;
  std::string out;
  std::string err;
};

/// Runs the tool in this process.
inline ToolOutcome runTool(const std::vector<std::string>& arguments) {
  std::vector<const char*> argv{"consolidator"};
  for (const std::string& argument : arguments) argv.push_back(argument.c_str());
  const StreamCapture capture;
  ConsolidatedFile file;
  const int status = runConsolidation(static_cast<int>(argv.size()), argv.data(), file);
  return {status, capture.out(), capture.err()};
}

}  // namespace consolidator
