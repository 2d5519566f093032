#pragma once

#include <sys/resource.h>
#include <sys/types.h>

#include <array>
#include <chrono>
#include <ostream>
#include <string>
#include <vector>

namespace consolidator {

/// How a process ended and what it printed.
struct Outcome {
  int status = 0;   ///< exit status, or minus the number of the signal that ended it
  std::string out;  ///< standard output
  std::string err;  ///< standard error

  friend bool operator==(const Outcome&, const Outcome&) = default;
};

std::ostream& operator<<(std::ostream& stream, const Outcome& outcome);

/// One run of a program in a process group of its own: nothing on standard input, standard output
/// and standard error collected apart. A run that takes too much processor time is killed, and
/// shows as SIGKILL; so is one that waits for ever.
class ExecutableRun {
 public:
  /// The most processor time of the process, in seconds.
  static constexpr rlim_t cpuLimit = 30;

  /// The longest time until all is done. Ample, since others may keep the machine busy.
  static constexpr std::chrono::minutes timeLimit{10};

  /// Runs the program at `path` in `folder` and waits for its end. `arguments` starts with what the
  /// program gets as its own name. Throws std::system_error when it cannot be started.
  ExecutableRun(const std::string& path, const std::vector<std::string>& arguments,
                const std::string& folder);

  const Outcome& outcome() const { return outcome_; }

  /// The most memory that the process had resident at once, in KiB. The test program counts in: at
  /// its start a process has the memory of the one that started it.
  long peakMemory() const { return peakMemory_; }

  /// The processor time that the process took, in seconds.
  double processorTime() const { return processorTime_; }

 private:
  struct Pipe {
    int readEnd = -1;
    int writeEnd = -1;
  };

  void collectOutput(std::array<Pipe, 2>& pipes);
  void awaitEnd();

  pid_t process_ = -1;
  Outcome outcome_;
  long peakMemory_ = 0;
  double processorTime_ = 0;
};

}  // namespace consolidator
