#include "inspect/coverage/CoverageLosses.h"

#include "inspect/coverage/KernelCoverage.h"
#include "inspect/records/HeldKernels.h"
#include "lookup/Matching.h"

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace consolidator::inspect {

namespace {

using consolidated::File;
using consolidated::Kernel;
using consolidated::Text;
using consolidated::Variable;

using Partners = std::vector<std::optional<std::uint32_t>>;

constexpr std::array bothKinds{VariableKind::Argument, VariableKind::Variable};

// The text itself, which is the key of what has no other.
std::string_view sameText(const std::string& text) { return text; }

// For each text before the position of its partner after.
Partners matchTexts(const std::vector<std::string>& before, const std::vector<std::string>& after) {
  Matching matching(after, sameText);
  Partners partners;
  for (const std::string& text : before) {
    const auto position = matching.take(text);
    partners.push_back(position ? std::optional(static_cast<std::uint32_t>(*position))
                                : std::nullopt);
  }
  return partners;
}

std::vector<std::string> pathsOf(const Kernel& kernel) {
  std::vector<std::string> paths;
  for (const Text& path : kernel.instancePaths()) paths.emplace_back(path.view());
  return paths;
}

std::vector<std::string> namesOf(const Kernel& kernel, VariableKind kind) {
  std::vector<std::string> names;
  const bool areArguments = kind == VariableKind::Argument;
  for (const Variable& variable : areArguments ? kernel.arguments() : kernel.variables()) {
    names.emplace_back(variable.name().view());
  }
  return names;
}

BitCoverage withoutDoubt(const BitCoverage& coverage) {
  return coverage.state == CoverageState::Doubtful ? BitCoverage() : coverage;
}

bool isLoss(const BitCoverage& before, const BitCoverage& after) {
  return after.bits < before.bits || after.state < before.state;
}

// The losses of one kernel, or all that it had if there is no later one.
class KernelLosses {
 public:
  KernelLosses(const Kernel& before, const std::optional<Kernel>& after,
               const CoverageLosses::Take& take)
      : before_(before), coverage_(before), take_(&take) {
    if (after) later_.emplace(*after);
    const std::vector<std::string> none;
    instances_ = matchTexts(pathsOf(before), after ? pathsOf(*after) : none);
    for (std::size_t i = 0; i < bothKinds.size(); ++i) {
      names_.at(i) = matchTexts(namesOf(before, bothKinds.at(i)),
                                after ? namesOf(*after, bothKinds.at(i)) : none);
    }
  }

  std::uint64_t report() {
    std::uint32_t instance = 0;
    for (const Text& path : before_.instancePaths()) {
      if (instance == coverage_.instances()) break;
      for (std::size_t i = 0; i < bothKinds.size(); ++i) {
        reportInstance(path.view(), instance, bothKinds.at(i), names_.at(i));
      }
      ++instance;
    }
    return losses_;
  }

 private:
  void reportInstance(std::string_view path, std::uint32_t instance, VariableKind kind,
                      const Partners& names) {
    std::uint32_t position = 0;
    coverage_.forEach(kind, instance, [&](const CoveredName& name, const BitCoverage& coverage) {
      const BitCoverage before = withoutDoubt(coverage);
      const auto after = later(kind, names, position++, instance);
      if (!isLoss(before, after.value_or(BitCoverage()))) return;
      ++losses_;
      (*take_)({before_.name().view(), path, kind, name.name, name.registerName, before, after});
    });
  }

  // What is known of a pair now. The bytes of a mapped file may have changed since the pairs were
  // matched.
  std::optional<BitCoverage> later(VariableKind kind, const Partners& names, std::uint32_t name,
                                   std::uint32_t instance) const {
    if (!later_ || name >= names.size() || instance >= instances_.size()) return std::nullopt;
    const auto partner = names[name];
    const auto place = instances_[instance];
    if (!partner || !place || *partner >= later_->names(kind) || *place >= later_->instances()) {
      return std::nullopt;
    }
    return withoutDoubt(later_->at(kind, *partner, *place));
  }

  Kernel before_;
  KernelCoverage coverage_;
  std::optional<KernelCoverage> later_;
  const CoverageLosses::Take* take_;
  Partners instances_;
  std::array<Partners, bothKinds.size()> names_;
  std::uint64_t losses_ = 0;
};

// What it takes to tell all losses of a kernel.
double bytesOfLosses(const Kernel& kernel) {
  const PairTexts texts = PairTexts::of(kernel);
  const auto kernelName = static_cast<double>(kernel.name().stored().size());
  return texts.instances * (texts.nameBytes + texts.names * kernelName) + texts.names * texts.paths;
}

std::string_view nameOfLater(const Kernel& kernel) { return kernel.name().view(); }

std::string reasonOf(const consolidated::KernelIterator& end) {
  return end.fault() ? end.fault()->sentence() : "";
}

std::vector<Kernel> kernelsOf(const File& file, std::string& whyIncomplete) {
  const std::size_t most = mostHeldKernels(file);
  std::vector<Kernel> kernels;
  auto at = file.kernels().begin();
  for (; at != consolidated::KernelIterator() && kernels.size() < most; ++at) {
    kernels.push_back(*at);
  }
  whyIncomplete = at == consolidated::KernelIterator() ? reasonOf(at) : repeatsKernels;
  return kernels;
}

}  // namespace

CoverageLosses::Outcome CoverageLosses::report(const Take& take) const {
  Outcome outcome;
  const std::vector<Kernel> later = kernelsOf(*after_, outcome.whyAfterIncomplete);
  Matching matching(later, nameOfLater);
  PairBudget budget;
  auto before = before_->kernels().begin();
  for (; before != consolidated::KernelIterator(); ++before) {
    const auto position = matching.take(before->name().view());
    if (!budget.spend(*before, bytesOfLosses(*before))) {
      ++outcome.notCompared;
      continue;
    }
    const auto after = position ? std::optional(later[*position]) : std::nullopt;
    outcome.losses += KernelLosses(*before, after, take).report();
  }
  outcome.whyBeforeIncomplete = reasonOf(before);
  return outcome;
}

}  // namespace consolidator::inspect
