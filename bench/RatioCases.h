#pragma once

#include "Contest.h"
#include "ProcessRunner.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator {

/// What a case makes its contest from: the tool to measure and a folder for its files.
class Workbench {
 public:
  /// The runner must outlive the workbench; the folder must exist.
  Workbench(const ProcessRunner& runner, std::string tool, std::string folder);

  /// Path of a file in the folder.
  std::string path(std::string_view name) const { return folder_ + "/" + std::string(name); }

  /// The words of a run of the tool with these arguments.
  std::vector<std::string> toolWords(std::vector<std::string> arguments) const;

  /// Runs the tool once. Returns nothing, after a message, when that fails.
  std::optional<ProcessCost> runTool(std::vector<std::string> arguments) const;

 private:
  const ProcessRunner& runner_;
  std::string tool_;
  std::string folder_;
};

/// One line of the table of results.
struct RatioCase {
  std::string_view name;

  /// Writes the input files. Nothing, after a message, when the tool fails on them.
  std::optional<Contest> (*prepare)(const Workbench& bench);
};

/// All cases, in the order in which they are measured.
std::vector<RatioCase> ratioCases();

}  // namespace consolidator
