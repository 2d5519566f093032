#include "model/PlainKernel.h"

#include "support/PlainRecords.h"

#include <algorithm>
#include <cstdint>

namespace consolidator {

namespace {

// Fills records in place, so that what was read stays there when a short read is thrown.
class PlainDecoder {
 public:
  explicit PlainDecoder(std::string_view bytes) : in_(bytes, 0) {}

  std::uint32_t number() { return in_.number(); }

  std::string text() { return in_.text(); }

  void texts(std::vector<std::string>& list) {
    for (std::uint32_t left = in_.number(); left > 0; --left) list.push_back(text());
  }

  void locations(std::vector<BitLocation>& list) {
    for (std::uint32_t left = in_.clampedNumber(); left > 0; --left) {
      const std::uint32_t first = in_.number();
      list.push_back({first, in_.number()});
    }
  }

  void read(VariableRecord& variable) {
    variable.name = in_.text();
    variable.second = in_.text();
    variable.cType = in_.text();
    for (std::uint32_t left = in_.clampedNumber(); left > 0; --left) {
      locations(variable.instanceBits.emplace_back());
    }
    variable.valid = true;
  }

  void read(HardwareVariable& variable) {
    variable.rtlName = in_.text();
    locations(variable.logicLocations);
    variable.valid = true;
  }

  void read(BreakableCondition& condition) {
    condition.kind = static_cast<ConditionKind>(in_.number());
    condition.condition = in_.text();
    if (condition.kind == ConditionKind::SourceLine) {
      condition.line = in_.number();
      condition.file = in_.text();
    }
    condition.valid = true;
  }

  template <typename T>
  void records(std::vector<T>& list) {
    for (std::uint32_t left = in_.number(); left > 0; --left) read(list.emplace_back());
  }

 private:
  PlainBytes in_;
};

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

bool PlainKernel::readBinary(std::string_view bytes) {
  PlainDecoder in(bytes);
  try {
    name = in.text();
    in.texts(instancePaths);
    type = static_cast<KernelType>(in.number());
    in.records(arguments);
    in.records(variables);
    in.records(hardwareVariables);
    in.records(breakableConditions);
    in.texts(brams);
    return true;
  } catch (const ShortRead&) {
    return false;
  }
}

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
