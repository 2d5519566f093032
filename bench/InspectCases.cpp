#include "InspectCases.h"

#include "InputFiles.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace consolidator {

namespace {

constexpr std::string_view executable = CONSOLIDATOR_INSPECT_EXECUTABLE;  // empty if not built

constexpr std::uint64_t recordBytes = 200'000'000;

// Goals: multiples of the time in which the tool saves the file again.
constexpr double wholeGoal = 1.5;
constexpr double lookGoal = 0.3;

// Of the time of a start of the tool.
constexpr double startGoal = 2;

// What a run may take beyond the records, which are mapped.
constexpr std::uint64_t allowance = std::uint64_t{32} * 1024 * 1024;

// The inspector looks at a file that the tool has saved; the tool saves another one like it. The
// conditions of the file take two saves until they stay as they are.
std::optional<Contest> contestWithResave(const Workbench& bench, std::vector<std::string> words,
                                         double goal) {
  const std::string file = bench.path("file");
  const std::string resaved = bench.path("resaved");
  const std::string noKernels = bench.path("no_kernels");
  writeConsolidatedFile(file, recordBytes);
  writeHierarchyFile(noKernels, 0, 0);
  const auto save = [&](const std::string& path) {
    return std::vector<std::string>{"-f", path, "-h", noKernels};
  };
  if (!bench.runTool(save(file)) || !bench.runTool(save(file))) return std::nullopt;
  std::filesystem::copy_file(file, resaved, std::filesystem::copy_options::overwrite_existing);
  words.emplace(words.begin(), executable);
  for (std::string& word : words) word = word == "FILE" ? file : word;
  Contest contest;
  contest.tool = {std::move(words), ""};
  contest.yardstick = {bench.toolWords(save(resaved)), resaved};
  contest.goal = goal;
  contest.peakGoal = recordBytes + allowance;
  contest.overwrites = true;
  return contest;
}

std::optional<Contest> start(const Workbench& bench) {
  Contest contest;
  contest.tool = {{std::string(executable), "--version"}, ""};
  contest.yardstick = {bench.toolWords({"--version"}), ""};
  contest.goal = startGoal;
  contest.repetitions = 200;
  return contest;
}

constexpr std::array cases = {
    RatioCase{"inspect-json",
              [](const Workbench& bench) {
                return contestWithResave(bench, {"json", "FILE"}, wholeGoal);
              }},
    RatioCase{"inspect-show",
              [](const Workbench& bench) {
                return contestWithResave(bench, {"show", "FILE"}, lookGoal);
              }},
    RatioCase{"inspect-find",
              [](const Workbench& bench) {
                return contestWithResave(bench, {"find", "FILE", "kernel_0"}, lookGoal);
              }},
    RatioCase{"inspect-start", start},
};

}  // namespace

std::span<const RatioCase> inspectCases() {
  if (executable.empty()) return {};
  return cases;
}

}  // namespace consolidator
