#include "Contest.h"

#include "ProcessRunner.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <iostream>
#include <limits>
#include <system_error>

namespace consolidator {

namespace {

// The samples of one contender.
class Side {
 public:
  Side(const ProcessRunner& runner, const Contest& contest, const Contender& contender)
      : runner_(runner), contest_(contest), contender_(contender) {}

  double smallestSeconds() const { return smallestSeconds_; }

  std::uint64_t peakBytes() const { return peakBytes_; }

  bool takeSample() {
    double total = 0;
    for (int i = 0; i < contest_.repetitions; ++i) {
      removeOutput();
      const auto cost = runner_.run(contender_.words);
      if (!cost || !hasOutput()) return false;
      total += cost->cpuSeconds;
      peakBytes_ = std::max(peakBytes_, cost->peakBytes);
    }
    smallestSeconds_ = std::min(smallestSeconds_, total / contest_.repetitions);
    return true;
  }

 private:
  void removeOutput() const {
    std::error_code error;
    if (!contest_.overwrites) std::filesystem::remove(contender_.output, error);
  }

  bool hasOutput() const {
    if (contender_.output.empty()) return true;
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(contender_.output, error);
    if (!error && size >= contest_.leastOutput) return true;
    std::cerr << "Missing or too short: " << contender_.output << std::endl;
    return false;
  }

  const ProcessRunner& runner_;
  const Contest& contest_;
  const Contender& contender_;
  double smallestSeconds_ = std::numeric_limits<double>::infinity();
  std::uint64_t peakBytes_ = 0;
};

double figureOf(Measure measure, double ratio) {
  constexpr double growth = 4;
  return measure == Measure::Exponent ? std::log(ratio) / std::log(growth) : ratio;
}

}  // namespace

std::optional<ContestResult> measureContest(const ProcessRunner& runner, const Contest& contest,
                                            int samples) {
  Side tool(runner, contest, contest.tool);
  Side yardstick(runner, contest, contest.yardstick);
  for (int i = 0; i < samples; ++i) {
    if (!tool.takeSample() || !yardstick.takeSample()) return std::nullopt;
  }
  ContestResult result{tool.smallestSeconds(), yardstick.smallestSeconds(), tool.peakBytes()};
  result.figure = figureOf(contest.measure, result.toolSeconds / result.yardstickSeconds);
  result.withinGoals = result.figure <= contest.goal &&
                       (contest.peakGoal == 0 || result.toolPeakBytes <= contest.peakGoal);
  return result;
}

}  // namespace consolidator
