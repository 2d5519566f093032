#pragma once

#include "model/KernelRecord.h"

#include <string>
#include <vector>

namespace consolidator {

/// Plain counterpart of KernelRecord for tests: the same fields in vectors without any index.
struct PlainKernel {
  std::string name;
  std::vector<std::string> instancePaths;
  KernelType type = KernelType::Unknown;
  std::vector<VariableRecord> arguments;
  std::vector<VariableRecord> variables;
  std::vector<HardwareVariable> hardwareVariables;
  std::vector<BreakableCondition> breakableConditions;
  std::vector<std::string> brams;

  /// Copies all fields.
  explicit PlainKernel(const KernelRecord& kernel);
};

/// Plain counterpart of mergeKernel(): every search goes through the whole list.
void mergePlainly(std::vector<PlainKernel>& kernels, const KernelRecord& incoming);

}  // namespace consolidator
