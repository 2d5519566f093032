#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace consolidator {

/// What one run of a program took.
struct ProcessCost {
  double cpuSeconds = 0;        ///< user and system time
  std::uint64_t peakBytes = 0;  ///< largest resident memory; at least that of this process
};

/// Starts programs one at a time and waits for them. What they print on standard output goes to
/// memory: not to a terminal, whose speed would count, and not to /dev/null, for which some
/// programs leave out their work.
class ProcessRunner {
 public:
  ProcessRunner();
  ProcessRunner(const ProcessRunner&) = delete;
  ProcessRunner& operator=(const ProcessRunner&) = delete;
  ~ProcessRunner();

  /// Runs a program, which is looked for in PATH, with its arguments. Unless it ends with status
  /// 0, says so on standard error and returns nothing.
  std::optional<ProcessCost> run(const std::vector<std::string>& words) const;

 private:
  int output_;
};

}  // namespace consolidator
