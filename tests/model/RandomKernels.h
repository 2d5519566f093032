#pragma once

#include "model/KernelRecord.h"

#include <cstddef>
#include <random>
#include <string>

namespace consolidator {

/// Makes kernel records at random, the same ones for the same seed. Names come from small sets, so
/// that equal ones meet within a record and between records; lists may hold equal elements. No text
/// holds a zero byte.
class RandomKernels {
 public:
  explicit RandomKernels(unsigned seed) : random_(seed) {}

  /// A record whose lists hold up to `longest` elements.
  KernelRecord next(std::size_t longest);

  /// A number below `end`.
  std::size_t below(std::size_t end) { return random_() % end; }

 private:
  std::string name();
  std::string text();
  KernelType type();
  BitLocation location();
  VariableRecord variable();
  HardwareVariable hardwareVariable();
  BreakableCondition condition();

  std::mt19937 random_;
};

}  // namespace consolidator
