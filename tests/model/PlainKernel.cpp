#include "model/PlainKernel.h"

#include <algorithm>
#include <cstdint>

namespace consolidator {

namespace {

bool sameCondition(const BreakableCondition& a, const BreakableCondition& b) {
  return a.kind == b.kind && a.condition == b.condition && a.line == b.line && a.file == b.file;
}

void addVariables(std::vector<VariableRecord>& known, const VariableList& incoming) {
  for (const VariableRecord& variable : incoming) {
    if (std::none_of(known.begin(), known.end(),
                     [&](const VariableRecord& other) { return other.name == variable.name; })) {
      known.emplace_back(variable.name, variable.second, variable.cType);
    }
  }
}

void addHardwareVariables(PlainKernel& known, const KernelRecord& incoming) {
  std::vector<HardwareVariable>& variables = known.hardwareVariables;
  for (const HardwareVariable& variable : incoming.hardwareVariables) {
    if (std::none_of(variables.begin(), variables.end(), [&](const HardwareVariable& other) {
          return other.rtlName == variable.rtlName;
        })) {
      variables.push_back(variable);
    }
  }
}

void addConditions(PlainKernel& known, const KernelRecord& incoming) {
  std::vector<BreakableCondition>& conditions = known.breakableConditions;
  for (const BreakableCondition& condition : incoming.breakableConditions) {
    if (std::none_of(conditions.begin(), conditions.end(), [&](const BreakableCondition& other) {
          return sameCondition(other, condition);
        })) {
      conditions.push_back(condition);
      conditions.back().valid = true;
    }
  }
}

}  // namespace

PlainKernel::PlainKernel(const KernelRecord& kernel)
    : name(kernel.name),
      instancePaths(kernel.instancePaths.begin(), kernel.instancePaths.end()),
      type(kernel.type),
      arguments(kernel.arguments.begin(), kernel.arguments.end()),
      variables(kernel.variables.begin(), kernel.variables.end()),
      hardwareVariables(kernel.hardwareVariables.begin(), kernel.hardwareVariables.end()),
      breakableConditions(kernel.breakableConditions.begin(), kernel.breakableConditions.end()),
      brams(kernel.brams) {}

void mergePlainly(std::vector<PlainKernel>& kernels, const KernelRecord& incoming) {
  const auto known = std::find_if(kernels.begin(), kernels.end(), [&](const PlainKernel& kernel) {
    return kernel.name == incoming.name;
  });
  if (known == kernels.end()) {
    kernels.emplace_back(incoming);
    return;
  }
  if (known->type == KernelType::Unknown) known->type = incoming.type;
  std::vector<std::string>& paths = known->instancePaths;
  for (const std::string& path : incoming.instancePaths) {
    if (std::find(paths.begin(), paths.end(), path) == paths.end()) paths.push_back(path);
  }
  addVariables(known->arguments, incoming.arguments);
  addVariables(known->variables, incoming.variables);
  addHardwareVariables(*known, incoming);
  addConditions(*known, incoming);
}

}  // namespace consolidator
