#include "ReadingCases.h"

#include "InputFiles.h"

#include <array>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace consolidator {

namespace {

constexpr std::uint64_t recordBytes = 200'000'000;

// Goals: multiples of the time in which the tool reads the file.
constexpr double walkGoal = 0.5;
constexpr double findGoal = 0.2;

// Both sides read the file; the library in the way that the words say.
Contest contestOfReaders(const std::string& file, std::vector<std::string> words, double goal) {
  words.insert(words.begin(), CONSOLIDATOR_READING_WORKER);
  Contest contest;
  contest.tool = {std::move(words), ""};
  contest.yardstick = {{CONSOLIDATOR_READING_WORKER, "tool", file}, ""};
  contest.goal = goal;
  return contest;
}

std::optional<Contest> walkRecords(const Workbench& bench) {
  const std::string file = bench.path("file");
  writeConsolidatedFile(file, recordBytes);
  return contestOfReaders(file, {"walk", file}, walkGoal);
}

// The last kernel takes longest to be found.
std::optional<Contest> findKernel(const Workbench& bench) {
  const std::string file = bench.path("file");
  const std::uint32_t kernels = writeConsolidatedFile(file, recordBytes);
  const std::string last = "kernel_" + std::to_string(kernels - 1);
  return contestOfReaders(file, {"find", file, last}, findGoal);
}

constexpr std::array cases = {
    RatioCase{"library-walk", walkRecords},
    RatioCase{"library-find", findKernel},
};

}  // namespace

std::span<const RatioCase> readingCases() { return cases; }

}  // namespace consolidator
