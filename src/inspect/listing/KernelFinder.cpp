#include "inspect/listing/KernelFinder.h"

#include <algorithm>

namespace consolidator::inspect {

using consolidated::HardwareVariable;
using consolidated::Variable;

std::uint64_t KernelFinder::find() {
  addWanted(kernel_.arguments());
  addWanted(kernel_.variables());
  collectFoundRegisters();
  if (query_.names(kernel_)) {
    count();
    report_.addKernel(kernel_);
  }
  reportVariables(VariableKind::Argument, kernel_.arguments());
  reportVariables(VariableKind::Variable, kernel_.variables());
  if (!found_.empty()) reportRegisters();
  if (count_ > 0) report_.endKernel();
  return count_;
}

void KernelFinder::addWanted(const Variables& variables) {
  for (const Variable& variable : variables) {
    if (query_.names(variable)) wanted_.emplace(variable.second().view());
  }
}

void KernelFinder::collectFoundRegisters() {
  for (const HardwareVariable& hardware : kernel_.hardwareVariables()) {
    if (isFound(hardware)) found_.emplace(hardware.registerName());
  }
}

bool KernelFinder::isFound(const HardwareVariable& hardware) const {
  if (query_.location()) return query_.isAmong(hardware.logicLocations());
  return query_.names(hardware) ||
         (!wanted_.empty() && wanted_.find(hardware.registerName()) != wanted_.end());
}

bool KernelFinder::isFound(const Variable& variable) const {
  if (query_.names(variable)) return true;
  if (!found_.empty() && found_.find(variable.second().view()) != found_.end()) return true;
  const auto bits = variable.instanceBits();
  return std::any_of(bits.begin(), bits.end(),
                     [&](const auto& locations) { return query_.isAmong(locations); });
}

void KernelFinder::reportVariables(VariableKind kind, const Variables& variables) {
  for (const Variable& variable : variables) {
    if (!isFound(variable)) continue;
    count();
    report_.addVariable(kind, variable, query_);
  }
}

void KernelFinder::reportRegisters() {
  RegisterInstances instances(kernel_, found_);
  for (const HardwareVariable& hardware : kernel_.hardwareVariables()) {
    if (!isFound(hardware)) continue;
    count();
    report_.addRegister(hardware, instances.of(hardware), query_);
  }
}

void KernelFinder::count() {
  if (count_++ == 0) report_.beginKernel(kernel_);
}

}  // namespace consolidator::inspect
