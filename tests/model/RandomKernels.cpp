#include "model/RandomKernels.h"

#include <cstdint>

namespace consolidator {

KernelRecord RandomKernels::next(std::size_t longest) {
  KernelRecord kernel;
  kernel.name = name();
  kernel.type = type();
  const auto repeat = [&](auto append) {
    for (std::size_t left = below(longest + 1); left > 0; --left) append();
  };
  repeat([&] { kernel.instancePaths.append(name()); });
  repeat([&] { kernel.arguments.append(variable()); });
  repeat([&] { kernel.variables.append(variable()); });
  repeat([&] { kernel.hardwareVariables.append(hardwareVariable()); });
  repeat([&] { kernel.breakableConditions.append(condition()); });
  repeat([&] { kernel.addBRAM(name()); });
  return kernel;
}

std::string RandomKernels::name() {
  return std::string(below(3), 'n') + (below(2) == 0 ? "" : std::to_string(below(12)));
}

std::string RandomKernels::text() {
  std::string text(below(8), '\0');
  for (char& byte : text) byte = static_cast<char>(1 + below(255));
  return text;
}

// Unknown half of the time, and now and then a number that has no name.
KernelType RandomKernels::type() {
  return below(2) == 0 ? KernelType::Unknown : static_cast<KernelType>(below(7));
}

BitLocation RandomKernels::location() {
  const auto first = static_cast<std::uint32_t>(random_());
  return {first, static_cast<std::uint32_t>(below(4))};
}

VariableRecord RandomKernels::variable() {
  const std::string variableName = name();
  const std::string second = text();
  VariableRecord variable(variableName, second, text());
  variable.instanceBits.resize(below(3));
  for (InstanceBits& bits : variable.instanceBits) {
    for (std::size_t left = below(4); left > 0; --left) bits.push_back(location());
  }
  return variable;
}

HardwareVariable RandomKernels::hardwareVariable() {
  HardwareVariable variable(name());
  for (std::size_t left = below(4); left > 0; --left) {
    variable.logicLocations.push_back(location());
  }
  return variable;
}

BreakableCondition RandomKernels::condition() {
  BreakableCondition condition(static_cast<ConditionKind>(below(4)), name());
  if (condition.kind == ConditionKind::SourceLine) {
    condition.line = static_cast<std::uint32_t>(below(3));
    condition.file = below(2) == 0 ? "a.c" : text();
  }
  return condition;
}

}  // namespace consolidator
