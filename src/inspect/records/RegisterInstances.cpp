#include "inspect/records/RegisterInstances.h"

#include <algorithm>
#include <cstdint>

namespace consolidator::inspect {

using consolidated::Belonging;
using consolidated::HardwareVariable;
using consolidated::List;
using consolidated::Text;
using consolidated::Variable;

RegisterInstances::RegisterInstances(const consolidated::Kernel& kernel, const TextSet& registers) {
  addBearers(kernel.arguments(), registers);
  addBearers(kernel.variables(), registers);
  if (bearers_.empty()) return;
  addPaths(kernel.instancePaths());
  const std::vector<std::string_view> patterns(paths_.begin(), paths_.end());
  search_ = std::make_unique<TextSearch>(patterns);
}

void RegisterInstances::addBearers(const List<Variable>& variables, const TextSet& registers) {
  for (const Variable& variable : variables) {
    const std::string_view name = variable.second().view();
    if (registers.find(name) != registers.end()) bearers_.emplace(name, variable);
  }
}

void RegisterInstances::addPaths(const List<Text>& paths) {
  TextSet known;
  for (const Text& path : paths) {
    const auto [place, isNew] = known.emplace(path.view());
    if (isNew) paths_.push_back(*place);
  }
}

RegisterInstances::Found RegisterInstances::of(const HardwareVariable& hardware) {
  Found found;
  const auto bearer = bearers_.find(hardware.registerName());
  if (bearer == bearers_.end()) return found;
  std::vector<std::uint32_t> positions =
      search_->findSomeIn(hardware.rtlName().view(), mostInstances);
  found.areAll = positions.size() < mostInstances;
  std::sort(positions.begin(), positions.end());
  for (const std::uint32_t position : positions) {
    const std::string_view path = paths_[position];
    const Belonging kind = belonging(hardware, bearer->second, path);
    if (kind != Belonging::None) found.instances.push_back({path, kind});
  }
  return found;
}

}  // namespace consolidator::inspect
