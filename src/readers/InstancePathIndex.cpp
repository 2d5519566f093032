#include "readers/InstancePathIndex.h"

#include <algorithm>
#include <string>

namespace consolidator {

namespace {

std::vector<const KernelRecord*> ownersOf(const KernelList& kernels) {
  std::vector<const KernelRecord*> owners;
  for (const KernelRecord& kernel : kernels) {
    owners.insert(owners.end(), kernel.instancePaths.size(), &kernel);
  }
  return owners;
}

NumbersByText indexPaths(const KernelList& kernels, std::size_t longest) {
  std::vector<NumbersByText::Note> notes;
  std::uint32_t instance = 0;
  for (const KernelRecord& kernel : kernels) {
    for (const std::string& path : kernel.instancePaths) {
      if (path.size() <= longest) notes.push_back({path, instance});
      ++instance;
    }
  }
  return NumbersByText(notes);
}

}  // namespace

InstancePathIndex::InstancePathIndex(const KernelList& kernels, std::size_t longestName)
    : owners_(ownersOf(kernels)),
      paths_(indexPaths(kernels, longestName)),
      search_(paths_.texts()) {}

const std::vector<const KernelRecord*>& InstancePathIndex::kernelsIn(std::string_view name) {
  foundPaths_.clear();
  foundInstances_.clear();
  foundKernels_.clear();
  search_.search(TextSearch::start, name, foundPaths_);
  for (const std::uint32_t path : foundPaths_) {
    const NumbersByText::Numbers instances = paths_.numbers(path);
    foundInstances_.insert(foundInstances_.end(), instances.begin(), instances.end());
  }
  std::sort(foundInstances_.begin(), foundInstances_.end());
  for (const std::uint32_t instance : foundInstances_) foundKernels_.push_back(owners_[instance]);
  return foundKernels_;
}

}  // namespace consolidator
