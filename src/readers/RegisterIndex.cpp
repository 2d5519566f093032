#include "readers/RegisterIndex.h"

#include "readers/FindLast.h"

#include <algorithm>
#include <string>
#include <tuple>

namespace consolidator {

namespace {

NumbersByText indexRegisters(const std::vector<KernelRecord>& kernels) {
  std::vector<NumbersByText::Note> notes;
  for (std::uint32_t i = 0; i < kernels.size(); ++i) {
    for (const VariableList* list : {&kernels[i].arguments, &kernels[i].variables}) {
      for (const VariableRecord& variable : *list) notes.push_back({variable.second, i});
    }
  }
  return NumbersByText(notes);
}

NumbersByText indexPaths(const std::vector<KernelRecord>& kernels, std::size_t longest) {
  std::vector<NumbersByText::Note> notes;
  for (std::uint32_t i = 0; i < kernels.size(); ++i) {
    for (const std::string& path : kernels[i].instancePaths) {
      if (path.size() <= longest) notes.push_back({path, i});
    }
  }
  return NumbersByText(notes);
}

// Appends what both lists hold. Many kernels may share a register or a path, seldom both.
void appendCommon(NumbersByText::Numbers a, NumbersByText::Numbers b,
                  std::vector<std::uint32_t>& common) {
  const auto& [shorter, longer] = a.size() < b.size() ? std::tie(a, b) : std::tie(b, a);
  for (const std::uint32_t kernel : shorter) {
    if (std::binary_search(longer.begin(), longer.end(), kernel)) common.push_back(kernel);
  }
}

}  // namespace

RegisterIndex::RegisterIndex(const std::vector<KernelRecord>& kernels, std::size_t longestName)
    : registers_(indexRegisters(kernels)),
      filter_(registers_.size()),
      paths_(indexPaths(kernels, longestName)),
      pathSearch_(paths_.texts()) {
  for (std::size_t i = 0; i < registers_.size(); ++i) filter_.add(registers_.text(i));
}

// The bits of one register often follow one another.
RegisterIndex::Found RegisterIndex::find(std::string_view hierarchicalName) {
  if (hardwareName_.empty() || std::string_view(hardwareName_).substr(1) != hierarchicalName) {
    hardwareName_ = '/';
    hardwareName_ += hierarchicalName;
    searchKernels();
  }
  return {hardwareName_, matches_};
}

void RegisterIndex::searchKernels() {
  const std::string_view name = hardwareName_;
  matches_.clear();
  const NumbersByText::Numbers owners = registers_.find(name.substr(findLast(name, '/') + 1));
  if (owners.empty()) return;
  for (const std::uint32_t path : pathSearch_.findIn(name)) {
    appendCommon(owners, paths_.numbers(path), matches_);
  }
  std::sort(matches_.begin(), matches_.end());
  matches_.erase(std::unique(matches_.begin(), matches_.end()), matches_.end());
}

}  // namespace consolidator
