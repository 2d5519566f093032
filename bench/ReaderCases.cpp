#include "ReaderCases.h"

#include "ReaderInputs.h"

#include <array>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace consolidator {

namespace {

constexpr std::uint64_t kernelXmlSize = 50'000'000;
constexpr std::uint64_t auxiliarySize = 50'000'000;
constexpr std::uint32_t argumentNames = 1'000;
constexpr std::uint64_t hlsSize = 100'000'000;
constexpr std::uint64_t ramReportSize = 50'000'000;
constexpr std::uint32_t ramKernels = 40;

constexpr double kernelXmlGoal = 1.2;
constexpr double auxiliaryGoal = 2.5;
constexpr double hlsGoal = 4;
constexpr double ramReportGoal = 10;
constexpr double growthGoal = 1.15;

// The growth is measured from a quarter of this count of entries.
constexpr std::uint32_t manyEntries = 64'000;

// The tool reading a file, against another program doing something with it.
Contest contestWith(const Workbench& bench, const std::string& option, const std::string& input,
                    std::vector<std::string> yardstick, double goal) {
  const std::string file = bench.path("file");
  Contest contest;
  contest.tool = {bench.toolWords({"-f", file, option, input}), file};
  contest.yardstick = {std::move(yardstick), ""};
  contest.goal = goal;
  contest.leastOutput = 1;
  return contest;
}

// `write(path, entries)` writes an input of so many entries.
template <typename Write>
Contest growth(const Workbench& bench, const std::string& option, Write write) {
  const auto contender = [&](const std::string& name, std::uint32_t entries) {
    const std::string input = bench.path("input_" + name);
    const std::string file = bench.path("file_" + name);
    write(input, entries);
    return Contender{bench.toolWords({"-c", "-f", file, option, input}), file};
  };
  Contest contest;
  contest.tool = contender("larger", manyEntries);
  contest.yardstick = contender("smaller", manyEntries / 4);
  contest.goal = growthGoal;
  contest.leastOutput = 1;
  contest.repetitions = 5;
  contest.measure = Measure::Exponent;
  return contest;
}

std::optional<Contest> readAuxiliary(const Workbench& bench) {
  const std::string input = bench.path("auxiliary.xml");
  writeAuxiliaryFileOfSize(input, argumentNames, auxiliarySize);
  return contestWith(bench, "-x", input, {"grep", "-c", "ak:arg", input}, auxiliaryGoal);
}

std::optional<Contest> growAuxiliaryArguments(const Workbench& bench) {
  return growth(bench, "-x", writeAuxiliaryFile);
}

std::optional<Contest> readKernelXml(const Workbench& bench) {
  const std::string input = bench.path("kernel.xml");
  writeKernelXmlOfSize(input, kernelXmlSize);
  return contestWith(bench, "-k", input, {"xmllint", "--noout", "--stream", input}, kernelXmlGoal);
}

std::optional<Contest> growKernelArguments(const Workbench& bench) {
  return growth(bench, "-k", writeKernelXml);
}

std::optional<Contest> readHls(const Workbench& bench) {
  const std::string input = bench.path("kernel.hls");
  writeHlsFileOfSize(input, {}, hlsSize);
  return contestWith(bench, "-s", input, {"grep", "-c", ":", input}, hlsGoal);
}

// All locals in one function.
std::optional<Contest> growHlsLocals(const Workbench& bench) {
  return growth(bench, "-s", [](const std::string& path, std::uint32_t locals) {
    writeHlsFile(path, {locals, locals, locals}, 1);
  });
}

std::optional<Contest> growHlsFunctions(const Workbench& bench) {
  return growth(bench, "-s", [](const std::string& path, std::uint32_t functions) {
    writeHlsFile(path, {1, functions, 100 * functions}, functions);
  });
}

// The tool has to find the kernels, so it adds the report to a file that stays; saving it again is
// part of the run.
std::optional<Contest> readRamReport(const Workbench& bench) {
  const std::string input = bench.path("ram_report");
  const std::string hierarchy = bench.path("hierarchy");
  writeRamReportOfSize(input, ramKernels, ramReportSize);
  writeRamHierarchyFile(hierarchy, ramKernels);
  Contest contest = contestWith(bench, "-r", input, {"grep", "-c", "RAMB", input}, ramReportGoal);
  if (!bench.runTool({"-f", contest.tool.output, "-h", hierarchy})) return std::nullopt;
  contest.overwrites = true;
  return contest;
}

constexpr std::array cases = {
    RatioCase{"read-kernel-xml", readKernelXml},
    RatioCase{"grow-kernel-xml", growKernelArguments},
    RatioCase{"read-auxiliary", readAuxiliary},
    RatioCase{"grow-auxiliary", growAuxiliaryArguments},
    RatioCase{"read-hls", readHls},
    RatioCase{"grow-hls-locals", growHlsLocals},
    RatioCase{"grow-hls-functions", growHlsFunctions},
    RatioCase{"read-ram-report", readRamReport},
};

}  // namespace

std::span<const RatioCase> readerCases() { return cases; }

}  // namespace consolidator
