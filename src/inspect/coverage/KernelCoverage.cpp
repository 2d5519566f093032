#include "inspect/coverage/KernelCoverage.h"

#include "inspect/lines/PathsInNames.h"

#include <algorithm>
#include <optional>

namespace consolidator::inspect {

using consolidated::HardwareVariable;
using consolidated::Locations;
using consolidated::Text;
using consolidated::Variable;

KernelCoverage::KernelCoverage(const consolidated::Kernel& kernel) : kernel_(kernel) {
  addPaths();
  addNames(VariableKind::Argument, arguments_);
  addNames(VariableKind::Variable, variables_);
  addRegisters();
  count(arguments_);
  count(variables_);
}

void KernelCoverage::addPaths() {
  for (const Text& path : kernel_.instancePaths()) pathNumbers_.push_back(paths_.add(path.view()));
}

void KernelCoverage::addNames(VariableKind kind, Names& names) {
  for (const Variable& variable : listOf(kind)) {
    const auto name = static_cast<std::uint32_t>(names.registers.size());
    names.names.push_back({variable.name().view(), variable.second().view()});
    names.registers.push_back(registers_.add(names.names.back().registerName));
    std::uint32_t instance = 0;
    for (const Locations& bits : variable.instanceBits()) {
      if (instance == instances()) break;
      names.stored.add(instance++, name, coverageOf(bits));
    }
  }
  names.stored.finish();
}

void KernelCoverage::addRegisters() {
  std::optional<PathsInNames> paths;
  for (const HardwareVariable& hardware : kernel_.hardwareVariables()) {
    const auto number = registers_.find(hardware.registerName());
    if (!number) continue;
    const BitCoverage coverage = coverageOf(hardware.logicLocations());
    if (coverage.state == CoverageState::None) continue;
    if (!paths) paths.emplace(paths_);
    const PathsInNames::Found& found = paths->in(hardware.rtlName().view());
    for (const std::uint32_t path : found.certain) located_.add(path, *number, coverage);
    for (const std::uint32_t path : found.doubtful) located_.add(path, *number, doubtful(coverage));
    isAll_ = isAll_ && found.areAll;
  }
  located_.finish();
}

BitCoverage KernelCoverage::at(VariableKind kind, std::uint32_t name,
                               std::uint32_t instance) const {
  const Names& known = of(kind);
  return std::max(located_.find(pathNumbers_[instance], known.registers[name]),
                  known.stored.find(instance, name));
}

// Pairs of which nothing is known are counted without a look at them, and equal paths and registers
// are counted once for all.
void KernelCoverage::count(Names& names) const {
  std::vector<std::uint32_t> bearers(registers_.size());
  for (const std::uint32_t number : names.registers) ++bearers[number];
  std::vector<CoverageCounts> ofPaths(paths_.size());
  for (CoverageCounts& ofPath : ofPaths) ofPath[CoverageState::None] = names.registers.size();
  const auto move = [](CoverageCounts& counts, CoverageState from, CoverageState to,
                       std::uint32_t number) {
    counts[from] -= number;
    counts[to] += number;
  };
  for (const CoveredPairs::Pair& pair : located_.all()) {
    move(ofPaths[pair.first], CoverageState::None, pair.coverage.state, bearers[pair.second]);
  }
  for (const std::uint32_t path : pathNumbers_) names.counts.push_back(ofPaths[path]);
  for (const CoveredPairs::Pair& pair : names.stored.all()) {
    const BitCoverage located =
        located_.find(pathNumbers_[pair.first], names.registers[pair.second]);
    move(names.counts[pair.first], located.state, std::max(located, pair.coverage).state, 1);
  }
}

}  // namespace consolidator::inspect
