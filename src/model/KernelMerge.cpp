#include "model/KernelMerge.h"

#include <string>
#include <utility>

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

void mergeKernel(KernelList& kernels, KernelRecord incoming) {
  if (KernelRecord* known = kernels.find(incoming.name)) {
    mergeInto(*known, incoming);
  } else {
    kernels.append(std::move(incoming));
  }
}

void mergeKernels(KernelList& kernels, std::vector<KernelRecord>&& incoming) {
  if (kernels.empty()) {
    // The usual first input of a new file, and often a large one: taken as a whole.
    KernelList taken(std::move(incoming));
    if (taken.hasDistinctKeys()) {
      kernels = std::move(taken);
      return;
    }
    incoming = taken.takeItems();
  }
  for (KernelRecord& record : incoming) mergeKernel(kernels, std::move(record));
}

}  // namespace consolidator
