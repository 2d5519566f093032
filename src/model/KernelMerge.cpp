#include "model/KernelMerge.h"

#include <string>

namespace consolidator {

namespace {

// Bits and BRAMs of the incoming record are dropped, deliberately.
void mergeInto(KernelRecord& known, const KernelRecord& incoming) {
  if (known.type == KernelType::Unknown) known.type = incoming.type;
  for (const std::string& path : incoming.instancePaths) known.addInstancePath(path);
  for (const VariableRecord& argument : incoming.arguments) {
    known.addArgument(argument.name, argument.second, argument.cType);
  }
  for (const VariableRecord& variable : incoming.variables) {
    known.addVariable(variable.name, variable.second, variable.cType);
  }
  for (const HardwareVariable& variable : incoming.hardwareVariables) {
    known.addHardwareVariable(variable);
  }
  for (BreakableCondition condition : incoming.breakableConditions) {
    condition.valid = true;
    known.addBreakableCondition(condition);
  }
}

}  // namespace

void mergeKernel(KernelList& kernels, const KernelRecord& incoming) {
  if (KernelRecord* known = kernels.find(incoming.name)) {
    mergeInto(*known, incoming);
  } else {
    kernels.append(incoming);
  }
}

}  // namespace consolidator
