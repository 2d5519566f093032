#pragma once

#include <chrono>
#include <cstdint>
#include <string_view>

namespace consolidator::inspect {

/// Says on standard error how far a long run has come, if that is a terminal, from one second on.
class Progress {
 public:
  Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  /// Removes what it said.
  ~Progress();

  /// So many bytes of this input were read.
  void say(std::string_view path, std::uint64_t bytes);

 private:
  using Clock = std::chrono::steady_clock;

  Clock::time_point next_;
  bool isTerminal_;
  bool hasSaid_ = false;
};

}  // namespace consolidator::inspect
