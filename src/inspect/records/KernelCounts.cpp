#include "inspect/records/KernelCounts.h"

namespace consolidator::inspect {

KernelCounts KernelCounts::of(const consolidated::Kernel& kernel) {
  KernelCounts counts;
  counts.instancePaths = kernel.instancePaths().size();
  counts.arguments = kernel.arguments().size();
  counts.variables = kernel.variables().size();
  counts.hardwareVariables = kernel.hardwareVariables().size();
  for (const consolidated::HardwareVariable& variable : kernel.hardwareVariables()) {
    counts.logicLocations += variable.logicLocations().size();
  }
  counts.breakableConditions = kernel.breakableConditions().size();
  counts.brams = kernel.brams().size();
  return counts;
}

KernelCounts& KernelCounts::operator+=(const KernelCounts& other) {
  for (const NamedCount& named : namedCounts) this->*named.count += other.*named.count;
  return *this;
}

}  // namespace consolidator::inspect
