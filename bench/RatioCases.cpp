#include "RatioCases.h"

#include "InputFiles.h"
#include "InspectCases.h"
#include "LogicLocationCases.h"
#include "ReaderCases.h"
#include "ReadingCases.h"
#include "consolidated/FileHeader.h"
#include "consolidated/SectionEntry.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <system_error>
#include <utility>

namespace consolidator {

namespace {

constexpr std::uint64_t dwarfSize = 1'000'000'000;
constexpr std::uint64_t recordBytes = 200'000'000;
constexpr std::uint64_t hierarchySize = 50'000'000;

// Goals: multiples of the CPU time of a copy, of a start of a program that does nothing, and the
// exponent of growth that still is linear work with larger tables.
constexpr double transferGoal = 1.7;
constexpr double resaveGoal = 4;
constexpr double hierarchyGoal = 5;
constexpr double startGoal = 2.3;
constexpr double growthGoal = 1.15;

// What a run may take beyond the DWARF bytes that it holds.
constexpr std::uint64_t dwarfAllowance = std::uint64_t{32} * 1024 * 1024;

struct HierarchyShape {
  std::uint32_t kernels;
  std::uint32_t paths;
};

std::uint64_t sizeOf(const std::string& path) {
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(path, error);
  return error ? 0 : size;
}

// The tool writing `output`, against a copy of `model`, a file with (nearly) the same bytes.
Contest contestWithCopy(const Workbench& bench, std::vector<std::string> arguments,
                        const std::string& output, const std::string& model, double goal) {
  const std::string copy = bench.path("copy");
  Contest contest;
  contest.tool = {bench.toolWords(std::move(arguments)), output};
  contest.yardstick = {{"cp", model, copy}, copy};
  contest.goal = goal;
  contest.leastOutput = sizeOf(model);
  return contest;
}

Contest contestWithEmptyProgram(const Workbench& bench, std::vector<std::string> arguments,
                                const std::string& output) {
  Contest contest;
  contest.tool = {bench.toolWords(std::move(arguments)), output};
  contest.yardstick = {{"/bin/true"}, ""};
  contest.goal = startGoal;
  contest.repetitions = 200;
  return contest;
}

std::optional<Contest> addDwarf(const Workbench& bench) {
  const std::string dwarf = bench.path("dwarf");
  const std::string file = bench.path("file");
  writeDwarfFile(dwarf, dwarfSize);
  Contest contest = contestWithCopy(bench, {"-f", file, "-d", dwarf}, file, dwarf, transferGoal);
  contest.peakGoal = dwarfSize + dwarfAllowance;
  return contest;
}

std::optional<Contest> dumpDwarf(const Workbench& bench) {
  const std::string dwarf = bench.path("dwarf");
  const std::string file = bench.path("file");
  const std::string dump = bench.path("dump");
  writeDwarfFile(dwarf, dwarfSize);
  if (!bench.runTool({"-f", file, "-d", dwarf})) return std::nullopt;
  Contest contest = contestWithCopy(bench, {"-f", file, "-u", dump}, dump, dwarf, transferGoal);
  contest.peakGoal = dwarfSize + dwarfAllowance;
  return contest;
}

// Makes a file with kernel records and their JSON as the tool itself writes it. Returns the
// arguments of a run that reads all of it, adds nothing and saves it. Conditions of several
// operators take two saves until they stay as they are.
std::optional<std::vector<std::string>> prepareResave(const Workbench& bench,
                                                      const std::string& file) {
  const std::string noKernels = bench.path("no_kernels");
  writeConsolidatedFile(file, recordBytes);
  writeHierarchyFile(noKernels, 0, 0);
  std::vector<std::string> arguments{"-f", file, "-h", noKernels};
  if (!bench.runTool(arguments) || !bench.runTool(arguments)) return std::nullopt;
  return arguments;
}

// The tool has to find its file and overwrites it, so the copy is there beforehand as well.
std::optional<Contest> resave(const Workbench& bench) {
  constexpr std::uint64_t tableSize = FileHeader::encodedSize + 2 * SectionEntry::encodedSize;
  const std::string file = bench.path("file");
  const std::string result = bench.path("result");
  const std::string json = bench.path("json");
  const auto arguments = prepareResave(bench, file);
  if (!arguments || !bench.runTool({"-f", file, "-j", json})) return std::nullopt;
  std::filesystem::copy_file(file, result, std::filesystem::copy_options::overwrite_existing);
  Contest contest = contestWithCopy(bench, *arguments, file, result, resaveGoal);
  std::filesystem::copy_file(file, contest.yardstick.output,
                             std::filesystem::copy_options::overwrite_existing);
  const std::uint64_t records = sizeOf(file) - sizeOf(json) - tableSize;
  contest.peakGoal = 3 * records + sizeOf(json);
  contest.overwrites = true;
  return contest;
}

std::optional<Contest> dumpJson(const Workbench& bench) {
  const std::string file = bench.path("file");
  const std::string json = bench.path("json");
  const std::string dump = bench.path("dump");
  if (!prepareResave(bench, file) || !bench.runTool({"-f", file, "-j", json})) return std::nullopt;
  return contestWithCopy(bench, {"-f", file, "-j", dump}, dump, json, transferGoal);
}

std::optional<Contest> createFromHierarchy(const Workbench& bench) {
  const std::string hierarchy = bench.path("hierarchy");
  const std::string file = bench.path("file");
  const std::string result = bench.path("result");
  writeHierarchyFileOfSize(hierarchy, hierarchySize);
  if (!bench.runTool({"-c", "-f", result, "-h", hierarchy})) return std::nullopt;
  return contestWithCopy(bench, {"-c", "-f", file, "-h", hierarchy}, file, result, hierarchyGoal);
}

// The smaller input must have a quarter of the larger one's kernels or paths.
std::optional<Contest> growth(const Workbench& bench, HierarchyShape smaller,
                              HierarchyShape larger) {
  const auto contender = [&](const std::string& name, HierarchyShape shape) {
    const std::string hierarchy = bench.path("hierarchy_" + name);
    const std::string file = bench.path("file_" + name);
    writeHierarchyFile(hierarchy, shape.kernels, shape.paths);
    return Contender{bench.toolWords({"-c", "-f", file, "-h", hierarchy}), file};
  };
  Contest contest;
  contest.tool = contender("larger", larger);
  contest.yardstick = contender("smaller", smaller);
  contest.goal = growthGoal;
  contest.leastOutput = 1;
  contest.repetitions = 5;
  contest.measure = Measure::Exponent;
  return contest;
}

std::optional<Contest> printVersion(const Workbench& bench) {
  return contestWithEmptyProgram(bench, {"--version"}, "");
}

std::optional<Contest> createSmall(const Workbench& bench) {
  const std::string hierarchy = bench.path("hierarchy");
  const std::string file = bench.path("file");
  writeHierarchyFile(hierarchy, 1, 1);
  return contestWithEmptyProgram(bench, {"-c", "-f", file, "-h", hierarchy}, file);
}

constexpr std::array cases = {
    RatioCase{"add-dwarf", addDwarf},
    RatioCase{"dump-dwarf", dumpDwarf},
    RatioCase{"resave-records", resave},
    RatioCase{"dump-json", dumpJson},
    RatioCase{"create-hierarchy", createFromHierarchy},
    RatioCase{"grow-kernels-64k",
              [](const Workbench& bench) {
                return growth(bench, {16'000, 1}, {64'000, 1});
              }},
    RatioCase{"grow-kernels-256k",
              [](const Workbench& bench) {
                return growth(bench, {64'000, 1}, {256'000, 1});
              }},
    RatioCase{"grow-paths-64k",
              [](const Workbench& bench) {
                return growth(bench, {1, 16'000}, {1, 64'000});
              }},
    RatioCase{"grow-paths-256k",
              [](const Workbench& bench) {
                return growth(bench, {1, 64'000}, {1, 256'000});
              }},
    RatioCase{"version", printVersion},
    RatioCase{"create-small", createSmall},
};

}  // namespace

Workbench::Workbench(const ProcessRunner& runner, std::string tool, std::string folder)
    : runner_(runner), tool_(std::move(tool)), folder_(std::move(folder)) {}

std::vector<std::string> Workbench::toolWords(std::vector<std::string> arguments) const {
  arguments.insert(arguments.begin(), tool_);
  return arguments;
}

std::optional<ProcessCost> Workbench::runTool(std::vector<std::string> arguments) const {
  return runner_.run(toolWords(std::move(arguments)));
}

std::vector<RatioCase> ratioCases() {
  std::vector<RatioCase> all(cases.begin(), cases.end());
  for (const std::span<const RatioCase> more :
       {readerCases(), logicLocationCases(), readingCases(), inspectCases()}) {
    all.insert(all.end(), more.begin(), more.end());
  }
  return all;
}

}  // namespace consolidator
