#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>

namespace consolidator::inspect {

/// What a child process may take.
struct ChildLimits {
  std::uint64_t memory = 0;        ///< bytes beyond what this process has already
  std::uint64_t answer = 0;        ///< bytes that it may write
  std::chrono::seconds processor;  ///< time of the processor
  std::chrono::seconds clock;      ///< time by the clock, which others may take, too
};

/// What became of a child process.
struct ChildAnswer {
  std::string bytes;    ///< what it wrote, if it is whole
  std::string failure;  ///< why it is not, as the rest of a sentence; else empty
};

/// Does a work in a child process, which writes its answer to the descriptor that it is given:
/// whatever foreign code does there, be it to crash, to hang or to take all memory, this process
/// goes on. The child has a copy of all that this process has, but can open nothing, writes no
/// messages and leaves no core file. It ends with this process.
///
/// The work returns whether its answer is whole. This process must have one thread.
ChildAnswer runLimited(const ChildLimits& limits, const std::function<bool(int)>& work);

}  // namespace consolidator::inspect
