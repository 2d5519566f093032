#include "model/MergeReport.h"

#include "model/KernelJsonText.h"

#include <algorithm>
#include <iterator>

namespace consolidator {

namespace {

std::string_view nameOf(KernelType type) {
  const std::string_view quoted = KernelJsonText::typeText(type);
  return quoted.substr(1, quoted.size() - 2);
}

// Tells of what follows the first so many elements of each list.
class GivenTeller {
 public:
  GivenTeller(RunObserver& observer, std::string_view kernel)
      : observer_(observer), kernel_(kernel) {}

  void tell(Item what, std::uint64_t count, std::string_view name = {}) const {
    if (count > 0) observer_.onGiven(kernel_, what, name, count);
  }

  void tellHardwareVariables(const HardwareVariableList& list, std::size_t before) const {
    if (list.size() == before) return;
    std::uint64_t locations = 0;
    for (std::size_t i = before; i < list.size(); ++i) locations += list[i].logicLocations.size();
    tell(Item::Register, list.size() - before);
    tell(Item::Location, locations);
  }

 private:
  RunObserver& observer_;
  std::string_view kernel_;
};

std::uint64_t countBits(const VariableList& list) {
  return static_cast<std::uint64_t>(
      std::count_if(list.begin(), list.end(),
                    [](const VariableRecord& variable) { return !variable.instanceBits.empty(); }));
}

}  // namespace

MergeReport::MergeReport(RunObserver& observer, KernelRecord& known, const KernelRecord& incoming)
    : observer_(observer),
      kernel_(known.name),
      type_(known.type),
      paths_(known.instancePaths.size()),
      arguments_(known.arguments.size()),
      variables_(known.variables.size()),
      hardwareVariables_(known.hardwareVariables.size()),
      conditions_(known.breakableConditions.size()) {
  tellDropped(known, incoming);
}

void MergeReport::tellGiven(const KernelRecord& known) const {
  const GivenTeller teller(observer_, kernel_);
  if (known.type != type_) teller.tell(Item::Type, 1, nameOf(known.type));
  teller.tell(Item::Path, known.instancePaths.size() - paths_);
  teller.tell(Item::Argument, known.arguments.size() - arguments_);
  teller.tell(Item::Variable, known.variables.size() - variables_);
  teller.tellHardwareVariables(known.hardwareVariables, hardwareVariables_);
  teller.tell(Item::Condition, known.breakableConditions.size() - conditions_);
}

void MergeReport::tellDropped(KernelRecord& known, const KernelRecord& incoming) const {
  if (known.type != KernelType::Unknown && incoming.type != KernelType::Unknown &&
      known.type != incoming.type) {
    drop(Item::Type, nameOf(incoming.type), 1, "the kernel has another type already");
  }
  tellDropped(known.arguments, incoming.arguments, Item::Argument);
  tellDropped(known.variables, incoming.variables, Item::Variable);
  tellHardwareVariables(known, incoming);
  if (!incoming.brams.empty() && incoming.brams != known.brams) {
    drop(Item::Bram, {}, incoming.brams.size(),
         "block RAMs come only with the record that first names the kernel");
  }
}

void MergeReport::tellDropped(VariableList& known, const VariableList& incoming, Item what) const {
  for (const VariableRecord& variable : incoming) {
    const VariableRecord* const same = known.find(variable.name);
    if (same != nullptr && (same->second != variable.second || same->cType != variable.cType)) {
      drop(what, variable.name, 1, "known with another register or type");
    }
    const bool hasBits = !variable.instanceBits.empty();
    if (hasBits && (same == nullptr || same->instanceBits != variable.instanceBits)) {
      drop(Item::Bits, variable.name, variable.instanceBits.size(),
           "bits come only with the record that first names the kernel");
    }
  }
}

void MergeReport::tellHardwareVariables(KernelRecord& known, const KernelRecord& incoming) const {
  for (const HardwareVariable& variable : incoming.hardwareVariables) {
    const HardwareVariable* const same = known.hardwareVariables.find(variable.rtlName);
    if (same == nullptr || same->logicLocations == variable.logicLocations) continue;
    drop(Item::Register, variable.rtlName, variable.logicLocations.size(),
         "known with other locations");
  }
}

void MergeReport::drop(Item what, std::string_view name, std::uint64_t count,
                       std::string_view reason) const {
  observer_.onDropped(kernel_, what, name, count, reason);
}

void tellNewKernel(RunObserver& observer, const KernelRecord& kernel) {
  const GivenTeller teller(observer, kernel.name);
  teller.tell(Item::Kernel, 1);
  if (kernel.type != KernelType::Unknown) teller.tell(Item::Type, 1, nameOf(kernel.type));
  teller.tell(Item::Path, kernel.instancePaths.size());
  teller.tell(Item::Argument, kernel.arguments.size());
  teller.tell(Item::Variable, kernel.variables.size());
  teller.tell(Item::Bits, countBits(kernel.arguments) + countBits(kernel.variables));
  teller.tellHardwareVariables(kernel.hardwareVariables, 0);
  teller.tell(Item::Condition, kernel.breakableConditions.size());
  teller.tell(Item::Bram, kernel.brams.size());
}

void tellNewKernels(RunObserver& observer, const KernelList& kernels) {
  for (const KernelRecord& kernel : kernels) tellNewKernel(observer, kernel);
}

}  // namespace consolidator
