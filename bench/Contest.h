#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace consolidator {

class ProcessRunner;

/// One of the two programs of a contest.
struct Contender {
  std::vector<std::string> words;  ///< the program and its arguments
  std::string output;              ///< the file that it writes; none if empty
};

/// How the costs of the two sides become the one figure that has a goal.
enum class Measure {
  Ratio,     ///< CPU time of the tool divided by that of the yardstick
  Exponent,  ///< growth: the yardstick is the tool itself on an input of a quarter of the size
};

/// The tool against a yardstick that has to do comparable work, and the goals.
///
/// Files that the two sides write are treated alike: both are removed before every run, so that
/// neither pays for the release of an old file; or, where the tool has to find its file (re-saving
/// it), neither is removed, and both overwrite a file of the same size.
struct Contest {
  Contender tool;
  Contender yardstick;
  double goal = 0;
  std::uint64_t peakGoal = 0;     ///< bytes of memory that the tool may take; no goal if 0
  std::uint64_t leastOutput = 0;  ///< bytes that every run must leave in its output file
  bool overwrites = false;        ///< whether the output files stay between the runs
  int repetitions = 1;            ///< runs in one sample, for what is too short to be measured
  Measure measure = Measure::Ratio;
};

/// The smallest samples of both sides.
struct ContestResult {
  double toolSeconds = 0;
  double yardstickSeconds = 0;
  std::uint64_t toolPeakBytes = 0;  ///< of all runs the largest
  double figure = 0;                ///< ratio or exponent
  bool withinGoals = false;
};

/// Takes `samples` samples (at least 1) of each side in turn. Nothing when a run fails, for which
/// there is a message on standard error.
std::optional<ContestResult> measureContest(const ProcessRunner& runner, const Contest& contest,
                                            int samples);

}  // namespace consolidator
