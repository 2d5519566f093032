#pragma once

#include "consolidated/Kernel.h"
#include "model/KernelRecord.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace consolidator {

/// Copies what the reading library shows of a kernel into a record of the tool's own model.
class LibraryRecord {
 public:
  static KernelRecord of(const consolidated::Kernel& kernel) {
    KernelRecord record;
    record.name = kernel.name().view();
    for (const consolidated::Text& path : kernel.instancePaths()) {
      record.instancePaths.append(std::string(path.view()));
    }
    record.type = static_cast<KernelType>(kernel.type());
    for (const auto& argument : kernel.arguments()) record.arguments.append(of(argument));
    for (const auto& variable : kernel.variables()) record.variables.append(of(variable));
    for (const auto& variable : kernel.hardwareVariables()) {
      record.hardwareVariables.append(of(variable));
    }
    for (const auto& condition : kernel.breakableConditions()) {
      record.breakableConditions.append(of(condition));
    }
    for (const consolidated::Text& bram : kernel.brams()) record.brams.emplace_back(bram.view());
    return record;
  }

 private:
  static std::vector<BitLocation> of(const consolidated::Locations& locations) {
    std::vector<BitLocation> record;
    for (const consolidated::Location location : locations) {
      record.push_back({location.first, location.second});
    }
    return record;
  }

  static VariableRecord of(const consolidated::Variable& variable) {
    VariableRecord record(variable.name().view(), variable.second().view(),
                          variable.cType().view());
    for (const auto& locations : variable.instanceBits()) {
      record.instanceBits.push_back(of(locations));
    }
    return record;
  }

  static HardwareVariable of(const consolidated::HardwareVariable& variable) {
    HardwareVariable record(variable.rtlName().view());
    record.logicLocations = of(variable.logicLocations());
    return record;
  }

  static BreakableCondition of(const consolidated::BreakableCondition& condition) {
    BreakableCondition record(static_cast<ConditionKind>(condition.kind()),
                              condition.condition().view());
    record.line = condition.line();
    record.file = condition.file().view();
    return record;
  }
};

}  // namespace consolidator
