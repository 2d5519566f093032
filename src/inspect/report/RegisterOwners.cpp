#include "inspect/report/RegisterOwners.h"

#include "inspect/report/PageText.h"

#include <fmt/format.h>

namespace consolidator::inspect {

using consolidated::HardwareVariable;
using consolidated::Kernel;
using consolidated::List;
using consolidated::Variable;

namespace {

std::string withOthers(std::string first, std::size_t others) {
  return others == 0 ? first : fmt::format("{} and {}", first, counted(others, "other"));
}

}  // namespace

RegisterOwners::RegisterOwners(const Kernel& kernel) : instances_(kernel, registersOf(kernel)) {
  add(kernel.arguments());
  add(kernel.variables());
}

RegisterOwners::Owner RegisterOwners::of(const HardwareVariable& hardware) {
  const auto variables = variables_.find(hardware.registerName());
  if (variables == variables_.end()) return {};
  Owner owner{withOthers(variables->second.first, variables->second.others), {}};
  const RegisterInstances::Found found = instances_.of(hardware);
  if (!found.instances.empty()) {
    const RegisterInstance& first = found.instances[0];
    const std::string path = shortened(first.path);
    const bool isSure = first.belonging == consolidated::Belonging::Certain;
    owner.instance = withOthers(isSure ? path : "maybe " + path, found.instances.size() - 1);
  }
  return owner;
}

void RegisterOwners::add(const List<Variable>& variables) {
  for (const Variable& variable : variables) {
    const auto [owners, isNew] = variables_.try_emplace(std::string(variable.second().view()));
    if (isNew) {
      owners->second.first = shortened(variable.name().view());
    } else {
      ++owners->second.others;
    }
  }
}

TextSet RegisterOwners::registersOf(const Kernel& kernel) {
  TextSet registers;
  for (const Variable& variable : kernel.arguments()) registers.emplace(variable.second().view());
  for (const Variable& variable : kernel.variables()) registers.emplace(variable.second().view());
  return registers;
}

}  // namespace consolidator::inspect
