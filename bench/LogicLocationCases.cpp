#include "LogicLocationCases.h"

#include "InputFiles.h"
#include "LogicLocationInputs.h"
#include "ProcessRunner.h"
#include "ReaderInputs.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace consolidator {

namespace {

// Goals: multiples of the CPU time of a search, of the time of the tool itself with a hundredth of
// the registers or a thousandth of the paths, and of a copy of all inputs.
constexpr double fewKnownGoal = 1.0;
constexpr double manyKnownGoal = 3.5;
constexpr double pathsGoal = 1.5;
constexpr double registersGoal = 5;
constexpr double buildGoal = 8;

// What a run may take beyond the memory that its result needs.
constexpr std::uint64_t searchAllowance = std::uint64_t{16} * 1024 * 1024;

// The inputs of a run: options, each followed by its file. The logic locations come last.
using Inputs = std::vector<std::string>;

Inputs writeInputs(const Workbench& bench, const std::string& name,
                   const LogicLocationShape& shape) {
  const std::string folder = bench.path(name);
  std::filesystem::create_directories(folder);
  Inputs inputs = writeRegisterInputs(folder, shape);
  inputs.insert(inputs.end(), {"-l", folder + "/nets.ll"});
  writeLogicLocationFile(inputs.back(), shape);
  return inputs;
}

std::vector<std::string> argumentsOf(const std::string& output, Inputs inputs) {
  inputs.insert(inputs.begin(), {"-c", "-f", output});
  return inputs;
}

// The tool creating a file.
Contest contestOf(const Workbench& bench, const Inputs& inputs, double goal) {
  const std::string output = bench.path("file");
  Contest contest;
  contest.tool = {bench.toolWords(argumentsOf(output, inputs)), output};
  contest.goal = goal;
  contest.leastOutput = 1;
  return contest;
}

Contest contestWithSearch(const Workbench& bench, const LogicLocationShape& shape, double goal) {
  const Inputs inputs = writeInputs(bench, "inputs", shape);
  Contest contest = contestOf(bench, inputs, goal);
  contest.yardstick = {{"grep", "-c", "Net=", inputs.back()}, ""};
  return contest;
}

std::optional<Contest> readFewKnown(const Workbench& bench) {
  return contestWithSearch(bench, {.lines = 5'000'000, .knownPercent = 1}, fewKnownGoal);
}

std::optional<Contest> readManyKnown(const Workbench& bench) {
  return contestWithSearch(bench, {.lines = 2'000'000, .knownPercent = 50}, manyKnownGoal);
}

// One kernel, and as many nets that are registers of it whatever the shape.
LogicLocationShape shapeOf(std::uint32_t paths, std::uint32_t registers) {
  constexpr std::uint32_t nets = 100'000;
  return {.lines = 2'000'000,
          .kernels = 1,
          .pathsPerKernel = paths,
          .registersPerKernel = registers,
          .scopes = nets / registers / paths};
}

std::optional<Contest> growth(const Workbench& bench, const LogicLocationShape& less,
                              const LogicLocationShape& more, double goal) {
  const Inputs inputs = writeInputs(bench, "more", more);
  Contest contest = contestOf(bench, inputs, goal);
  const std::string output = bench.path("file_less");
  contest.yardstick = {bench.toolWords(argumentsOf(output, writeInputs(bench, "less", less))),
                       output};
  const std::string result = bench.path("result");
  if (!bench.runTool(argumentsOf(result, inputs))) return std::nullopt;
  const auto peak = bench.runTool({"-f", result, "-h", "/dev/null"});
  if (!peak) return std::nullopt;
  contest.peakGoal = peak->peakBytes + searchAllowance;
  return contest;
}

std::optional<Contest> growPaths(const Workbench& bench) {
  return growth(bench, shapeOf(1, 100), shapeOf(1'000, 100), pathsGoal);
}

std::optional<Contest> growRegisters(const Workbench& bench) {
  return growth(bench, shapeOf(1, 100), shapeOf(1, 10'000), registersGoal);
}

// Every kind of input, in sizes as they come from one build of a large design.
std::optional<Contest> readBuild(const Workbench& bench) {
  constexpr std::uint64_t otherSize = 10'000'000;
  constexpr std::uint32_t argumentNames = 1'000;
  const LogicLocationShape shape{.lines = 5'000'000, .netPercent = 80, .knownPercent = 10};
  Inputs inputs = writeInputs(bench, "inputs", shape);
  const auto add = [&](const std::string& option, const std::string& name) {
    inputs.insert(inputs.begin(), {option, bench.path(name)});
    return inputs[1];
  };
  writeDwarfFile(add("-d", "dwarf"), otherSize);
  writeKernelXmlOfSize(add("-k", "filter.xml"), otherSize);
  writeAuxiliaryFileOfSize(add("-x", "filter_auxiliary.xml"), argumentNames, otherSize);
  writeHlsFileOfSize(add("-s", "filter.dbg"), {}, otherSize);
  writeRamReportOfSize(add("-r", "ram_report"), shape.kernels, otherSize);
  Contest contest = contestOf(bench, inputs, buildGoal);
  contest.yardstick.words = {"cat"};
  for (std::size_t i = 1; i < inputs.size(); i += 2) contest.yardstick.words.push_back(inputs[i]);
  return contest;
}

constexpr std::array cases = {
    RatioCase{"read-ll-few-known", readFewKnown}, RatioCase{"read-ll-many-known", readManyKnown},
    RatioCase{"grow-ll-paths", growPaths},        RatioCase{"grow-ll-registers", growRegisters},
    RatioCase{"read-build", readBuild},
};

}  // namespace

std::span<const RatioCase> logicLocationCases() { return cases; }

}  // namespace consolidator
