#include "model/KernelRecord.h"

#include "model/ConditionPreparer.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace consolidator {

void KernelRecord::reset() {
  // The hardware variables stay: decoding resets only fresh records, which have none.
  name.clear();
  instancePaths.clear();
  type = KernelType::Unknown;
  arguments.clear();
  variables.clear();
  breakableConditions.clear();
  brams.clear();
}

void KernelRecord::addInstancePath(std::string_view path) {
  if (!instancePaths.contains(path)) instancePaths.append(std::string(path));
}

void KernelRecord::addArgument(std::string_view argumentName, std::string_view second,
                               std::string_view cType) {
  if (!arguments.contains(argumentName)) arguments.append({argumentName, second, cType});
}

void KernelRecord::addVariable(std::string_view variableName, std::string_view second,
                               std::string_view cType) {
  if (!variables.contains(variableName)) variables.append({variableName, second, cType});
}

void KernelRecord::addHardwareVariable(HardwareVariable variable) {
  if (!hardwareVariables.contains(variable.rtlName)) hardwareVariables.append(std::move(variable));
}

void KernelRecord::setLogicLocation(std::string_view rtlName, std::uint32_t bitIndex,
                                    std::uint32_t first, std::uint32_t second) {
  HardwareVariable* variable = hardwareVariables.find(rtlName);
  if (variable == nullptr) variable = &hardwareVariables.append(HardwareVariable(rtlName));
  std::vector<LogicLocation>& locations = variable->logicLocations;
  if (const std::size_t least = std::size_t{bitIndex} + 1; locations.size() < least) {
    locations.reserve(std::bit_ceil(least));  // most registers are that wide, seldom wider
    locations.resize(least);
  }
  locations[bitIndex] = {first, second};
}

void KernelRecord::addBreakableCondition(ConditionKind kind, std::string_view condition) {
  addBreakableCondition(BreakableCondition(kind, condition));
}

void KernelRecord::addBreakableCondition(const BreakableCondition& condition) {
  if (!breakableConditions.contains(BreakableConditionKey{}(condition))) {
    breakableConditions.append(condition);
  }
}

void KernelRecord::addBRAM(std::string_view bramName) { brams.emplace_back(bramName); }

void KernelRecord::prepareBreakableConditions() {
  if (breakableConditions.empty()) return;
  breakableConditions.edit([](std::vector<BreakableCondition>& conditions) {
    std::erase_if(conditions, [](const BreakableCondition& condition) {
      return isTriviallyTrue(condition.condition);
    });
    ConditionPreparer preparer;
    for (BreakableCondition& condition : conditions) {
      condition.condition = preparer.prepare(condition.condition);
    }
  });
}

}  // namespace consolidator
