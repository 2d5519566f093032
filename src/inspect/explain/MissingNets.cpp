#include "inspect/explain/MissingNets.h"

#include "lookup/KeyedHash.h"

#include <unordered_set>

namespace consolidator::inspect {

namespace {

constexpr std::size_t mostMissing = 10'000;
constexpr std::uint64_t mostLooked = 200'000'000;
constexpr std::uint64_t mostSteps = 500'000'000;

// Which registers have a location in which of the instances of one kernel.
class LocatedRegisters {
 public:
  LocatedRegisters(const KernelRecord& kernel, InstanceNets& nets) {
    for (const consolidator::HardwareVariable& variable : kernel.hardwareVariables) {
      const std::uint64_t leaf = keyedHash(lastComponent(variable.rtlName));
      for (const std::uint32_t path : nets.around(variable.rtlName)) {
        pairs_.insert(keyedHash(leaf + path));
      }
    }
  }

  bool has(std::string_view reg, std::size_t path) const {
    return pairs_.contains(keyedHash(keyedHash(reg) + path));
  }

 private:
  std::unordered_set<std::uint64_t> pairs_;  // hashes
};

bool hasBits(const VariableRecord& variable, std::size_t instance) {
  return instance < variable.instanceBits.size() && !variable.instanceBits[instance].empty();
}

}  // namespace

void MissingNets::find(Explanation& explanation) {
  for (const KernelRecord& kernel : kernels_) {
    if (explanation.isNeverFoundLimited) break;
    findInKernel(kernel, explanation);
  }
  explanation.isClosestLimited = nets_.isLimited() || distance_.steps() >= mostSteps;
}

void MissingNets::findInKernel(const KernelRecord& kernel, Explanation& explanation) {
  const LocatedRegisters located(kernel, nets_);
  for (std::size_t i = 0; i < kernel.instancePaths.size(); ++i) {
    const std::size_t path = nets_.paths().positionOf(kernel.instancePaths[i]);
    for (const VariableList* list : {&kernel.arguments, &kernel.variables}) {
      for (const VariableRecord& variable : *list) {
        const bool isOver = ++looked_ > mostLooked || explanation.neverFound.size() >= mostMissing;
        explanation.isNeverFoundLimited = isOver;
        if (isOver) return;
        if (variable.second.empty() || hasBits(variable, i)) continue;
        if (located.has(variable.second, path)) continue;
        const auto net = closest(variable.second, path);
        // Another kernel with this kernel's name has its locations.
        if (net && lastComponent(*net) == variable.second) continue;
        explanation.neverFound.push_back(
            {kernel.name, kernel.instancePaths[i], variable.name, variable.second, net});
      }
    }
  }
}

void MissingNets::prepareNames(std::size_t path) {
  if (namedPath_ == path) return;
  namedPath_ = path;
  names_.clear();
  for (const std::uint32_t net : nets_.netsOf(path)) {
    const std::string_view leaf = lastComponent(nets_.net(net));
    names_.push_back({leaf, net, LetterCounts(leaf)});
  }
}

std::optional<std::string> MissingNets::closest(std::string_view reg, std::size_t path) {
  if (path >= nets_.paths().size()) return std::nullopt;
  prepareNames(path);
  std::size_t limit = reg.size() / 3;
  const LetterCounts letters(reg);
  const Name* best = nullptr;
  distance_.from(reg);
  for (const Name& name : names_) {
    if (distance_.steps() >= mostSteps) break;
    if (letters.leastDistance(name.letters) > limit) {
      distance_.skip();
      continue;
    }
    const auto distance = distance_.to(name.leaf, limit);
    if (!distance) continue;
    best = &name;
    if (*distance <= 1) break;  // a net that is named like the register would have been taken
    limit = *distance - 1;
  }
  if (best == nullptr) return std::nullopt;
  return nets_.net(best->net).substr(1);
}

}  // namespace consolidator::inspect
