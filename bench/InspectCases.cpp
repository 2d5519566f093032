#include "InspectCases.h"

#include "InputFiles.h"

#include <algorithm>
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
constexpr std::uint64_t smallBytes = 1000;

constexpr int manyRuns = 200;  // of what is too short to be measured

// Goals: multiples of the time in which the tool saves the file again, or in which the document of
// the file is written.
constexpr double wholeGoal = 1.5;
constexpr double lookGoal = 0.3;

// Of the time that the JSON document of the same file takes.
constexpr double databaseGoal = 35;

// Of the time of a start of the tool.
constexpr double startGoal = 2;

// Of the time in which the tool does the same run and the file is copied before.
constexpr double safeGoal = 1.3;

// What a run may take beyond what it looks at, which is mapped.
constexpr std::uint64_t allowance = std::uint64_t{32} * 1024 * 1024;
constexpr std::uint64_t databaseAllowance = 2 * allowance;

void copyFile(const std::string& from, const std::string& to) {
  std::filesystem::copy_file(from, to, std::filesystem::copy_options::overwrite_existing);
}

// The inspector looks at a file that the tool has saved; the tool saves another one like it. The
// conditions of the file take two saves until they stay as they are, save for their operands, which
// every further one swaps: EARLIER is the file before that.
std::optional<Contest> contestWithResave(const Workbench& bench, std::vector<std::string> words,
                                         double goal) {
  const std::string file = bench.path("file");
  const std::string earlier = bench.path("earlier");
  const std::string resaved = bench.path("resaved");
  const std::string noKernels = bench.path("no_kernels");
  writeConsolidatedFile(file, recordBytes);
  writeHierarchyFile(noKernels, 0, 0);
  const auto save = [&](const std::string& path) {
    return std::vector<std::string>{"-f", path, "-h", noKernels};
  };
  if (!bench.runTool(save(file)) || !bench.runTool(save(file))) return std::nullopt;
  copyFile(file, earlier);
  if (!bench.runTool(save(file))) return std::nullopt;
  copyFile(file, resaved);
  words.emplace(words.begin(), executable);
  std::replace(words.begin(), words.end(), std::string("FILE"), file);
  std::replace(words.begin(), words.end(), std::string("EARLIER"), earlier);
  Contest contest;
  contest.tool = {std::move(words), ""};
  contest.yardstick = {bench.toolWords(save(resaved)), resaved};
  contest.goal = goal;
  contest.peakGoal = recordBytes + allowance;
  contest.overwrites = true;
  return contest;
}

// Looks at all of the file, the JSON text included.
std::optional<Contest> verify(const Workbench& bench) {
  auto contest = contestWithResave(bench, {"verify", "FILE"}, wholeGoal);
  if (contest) contest->peakGoal = std::filesystem::file_size(bench.path("file")) + allowance;
  return contest;
}

// Looks at the records of two files.
std::optional<Contest> diff(const Workbench& bench) {
  auto contest = contestWithResave(bench, {"diff", "EARLIER", "FILE"}, wholeGoal);
  if (contest) contest->peakGoal = 2 * recordBytes + allowance;
  return contest;
}

// Looks at the records, against the document of all that is in them.
std::optional<Contest> coverage(const Workbench& bench) {
  auto contest = contestWithResave(bench, {"coverage", "--format", "json", "FILE"}, wholeGoal);
  if (!contest) return std::nullopt;
  contest->yardstick = {{std::string(executable), "json", bench.path("file")}, ""};
  contest->overwrites = false;
  return contest;
}

// Writes two entries of a tree for each location, where JSON has a few digits.
std::optional<Contest> sql(const Workbench& bench) {
  const std::string file = bench.path("file");
  writeConsolidatedFile(file, recordBytes);
  Contest contest;
  contest.tool = {{std::string(executable), "sql", file, "-o", bench.path("database")},
                  bench.path("database")};
  contest.yardstick = {{std::string(executable), "json", file}, ""};
  contest.goal = databaseGoal;
  contest.peakGoal = recordBytes + databaseAllowance;
  return contest;
}

std::optional<Contest> start(const Workbench& bench) {
  Contest contest;
  contest.tool = {{std::string(executable), "--version"}, ""};
  contest.yardstick = {bench.toolWords({"--version"}), ""};
  contest.goal = startGoal;
  contest.repetitions = manyRuns;
  return contest;
}

// A run against the tool's own and a copy of the file, which is what whoever cannot afford to lose
// it would make.
std::optional<Contest> safeRun(const Workbench& bench, std::uint64_t bytes, int repetitions) {
  constexpr const char* script = R"(cp "$1" "$1.copy" && exec "$2" -f "$1" -h "$3")";
  const std::string file = bench.path("file");
  const std::string resaved = bench.path("resaved");
  const std::string noKernels = bench.path("no_kernels");
  writeConsolidatedFile(file, bytes);
  writeHierarchyFile(noKernels, 0, 0);
  constexpr int saves = 3;  // until the conditions stay as they are
  for (int i = 0; i < saves; ++i) {
    if (!bench.runTool({"-f", file, "-h", noKernels})) return std::nullopt;
  }
  copyFile(file, resaved);
  Contest contest;
  contest.tool = {{std::string(executable), "run", "--quiet", "--", "-f", file, "-h", noKernels},
                  ""};
  contest.yardstick = {
      {"/bin/sh", "-c", script, "sh", resaved, bench.toolWords({}).front(), noKernels}, ""};
  contest.goal = safeGoal;
  contest.overwrites = true;
  contest.repetitions = repetitions;
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
    RatioCase{"inspect-verify", verify},
    RatioCase{"inspect-diff", diff},
    RatioCase{"inspect-coverage", coverage},
    RatioCase{"inspect-sql", sql},
    RatioCase{"inspect-run", [](const Workbench& bench) { return safeRun(bench, recordBytes, 1); }},
    RatioCase{"inspect-run-small",
              [](const Workbench& bench) { return safeRun(bench, smallBytes, manyRuns); }},
    RatioCase{"inspect-start", start},
};

}  // namespace

std::span<const RatioCase> inspectCases() {
  if (executable.empty()) return {};
  return cases;
}

}  // namespace consolidator
