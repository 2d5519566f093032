#include "inspect/explain/DoubtfulNets.h"

#include <algorithm>
#include <utility>

namespace consolidator::inspect {

namespace {

NumbersByText indexRegisters(const KernelList& kernels) {
  std::vector<NumbersByText::Note> notes;
  for (std::uint32_t i = 0; i < kernels.size(); ++i) {
    for (const VariableList* list : {&kernels[i].arguments, &kernels[i].variables}) {
      for (const VariableRecord& variable : *list) notes.push_back({variable.second, i});
    }
  }
  return NumbersByText(notes);
}

}  // namespace

DoubtfulNets::DoubtfulNets(const KernelList& kernels, const NumbersByText& paths)
    : kernels_(kernels),
      paths_(paths),
      registers_(indexRegisters(kernels)),
      search_(paths.texts()) {}

bool DoubtfulNets::note(std::string_view hardwareName, std::uint64_t line,
                        const InstanceNets::Paths& inside) {
  constexpr std::size_t mostListed = 1000;
  const std::vector<std::uint32_t> paths = findPaths(hardwareName, inside);
  if (paths.empty()) return false;
  const std::string net(hardwareName);
  if (const auto known = listed_.find(net); known != listed_.end()) {
    for (const std::size_t position : known->second) ++found_[position].count;
    return false;
  }
  bool isLeftOut = false;
  for (const std::uint32_t path : paths) {
    const auto kernel = kernelOf(path, lastComponent(hardwareName));
    if (!kernel) continue;
    isLeftOut = found_.size() >= mostListed;
    if (isLeftOut) break;
    listed_[net].push_back(found_.size());
    found_.push_back({kernels_[*kernel].name, std::string(paths_.text(path)), net, 1, line});
  }
  return isLeftOut;
}

std::vector<DoubtfulNet> DoubtfulNets::take() {
  listed_.clear();
  return std::exchange(found_, {});
}

// Nearly all nets are found in as many instances by the one rule as by the other.
std::vector<std::uint32_t> DoubtfulNets::findPaths(std::string_view hardwareName,
                                                   const InstanceNets::Paths& inside) {
  constexpr std::size_t mostPaths = 64;
  const std::vector<std::uint32_t>& wide = search_.findIn(hardwareName);
  std::vector<std::uint32_t> paths;
  if (wide.size() == inside.size()) return paths;
  for (const std::uint32_t path : wide) {
    if (paths.size() == mostPaths) break;
    if (std::ranges::find(inside, path) == inside.end()) paths.push_back(path);
  }
  return paths;
}

// The first kernel that has the path and the register.
std::optional<std::uint32_t> DoubtfulNets::kernelOf(std::uint32_t path,
                                                    std::string_view leaf) const {
  constexpr std::size_t mostKernels = 64;
  const std::size_t position = registers_.positionOf(leaf);
  if (position == PositionIndex::none) return std::nullopt;
  const NumbersByText::Numbers owners = registers_.numbers(position);
  const NumbersByText::Numbers kernels = paths_.numbers(path);
  for (const std::uint32_t kernel : kernels.first(std::min(kernels.size(), mostKernels))) {
    if (std::ranges::binary_search(owners, kernel)) return kernel;
  }
  return std::nullopt;
}

}  // namespace consolidator::inspect
