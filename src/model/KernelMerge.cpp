#include "model/KernelMerge.h"

#include "model/MergeReport.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace consolidator {

namespace {

// Logic locations take most of the memory of a large model, so they are moved, and a list for a
// kernel that has none is moved as a whole.
void takeHardwareVariables(KernelRecord& known, HardwareVariableList& incoming) {
  if (known.hardwareVariables.empty() && incoming.hasDistinctKeys()) {
    known.hardwareVariables = std::move(incoming);
    return;
  }
  incoming.edit([&](std::vector<HardwareVariable>& variables) {
    for (HardwareVariable& variable : variables) known.addHardwareVariable(std::move(variable));
  });
}

// Drops the bits and BRAMs of the incoming record, as the rules of mergeKernel() say.
void mergeInto(KernelRecord& known, KernelRecord&& incoming) {
  if (known.type == KernelType::Unknown) known.type = incoming.type;
  for (const std::string& path : incoming.instancePaths) known.addInstancePath(path);
  for (const VariableRecord& argument : incoming.arguments) {
    known.addArgument(argument.name, argument.second, argument.cType);
  }
  for (const VariableRecord& variable : incoming.variables) {
    known.addVariable(variable.name, variable.second, variable.cType);
  }
  takeHardwareVariables(known, incoming.hardwareVariables);
  for (BreakableCondition condition : incoming.breakableConditions) {
    condition.valid = true;
    known.addBreakableCondition(condition);
  }
}

}  // namespace

void mergeKernel(KernelList& kernels, KernelRecord incoming, RunObserver* observer) {
  if (KernelRecord* known = kernels.find(incoming.name)) {
    std::optional<MergeReport> report;
    if (observer != nullptr) report.emplace(*observer, *known, incoming);
    mergeInto(*known, std::move(incoming));
    if (report) report->tellGiven(*known);
  } else {
    if (observer != nullptr) tellNewKernel(*observer, incoming);
    kernels.append(std::move(incoming));
  }
}

void mergeKernels(KernelList& kernels, KernelSequence&& incoming, RunObserver* observer) {
  if (kernels.empty()) {
    // The usual first input of a new file, and often a large one: taken as a whole.
    KernelList taken(std::move(incoming));
    if (taken.hasDistinctKeys()) {
      kernels = std::move(taken);
      if (observer != nullptr) tellNewKernels(*observer, kernels);
      return;
    }
    incoming = taken.takeItems();
  }
  // Each record is freed before the next one is merged.
  for (; !incoming.empty(); incoming.pop_front()) {
    mergeKernel(kernels, std::move(incoming.front()), observer);
  }
}

}  // namespace consolidator
