#include "readers/RegisterIndex.h"

#include "text/FindLast.h"

#include <string>

namespace consolidator {

namespace {

NumbersByText indexRegisters(const KernelSequence& kernels) {
  std::vector<NumbersByText::Note> notes;
  for (std::uint32_t i = 0; i < kernels.size(); ++i) {
    for (const VariableList* list : {&kernels[i].arguments, &kernels[i].variables}) {
      for (const VariableRecord& variable : *list) notes.push_back({variable.second, i});
    }
  }
  return NumbersByText(notes);
}

NumbersByText indexPaths(const KernelSequence& kernels, std::size_t longest) {
  std::vector<NumbersByText::Note> notes;
  for (std::uint32_t i = 0; i < kernels.size(); ++i) {
    for (const std::string& path : kernels[i].instancePaths) {
      if (path.size() <= longest) notes.push_back({path, i});
    }
  }
  return NumbersByText(notes);
}

// Looking through this many numbers for each byte of the name takes about as long as reading the
// line.
constexpr std::size_t cheapPerByte = 2048;

}  // namespace

RegisterIndex::RegisterIndex(const KernelSequence& kernels, std::size_t longestName)
    : registers_(indexRegisters(kernels)),
      filter_(registers_.size()),
      paths_(indexPaths(kernels, longestName)),
      pathSearch_(paths_.texts()),
      common_(registers_, paths_, kernels.size()) {
  for (std::size_t i = 0; i < registers_.size(); ++i) filter_.add(registers_.text(i));
}

// The bits of one register often follow one another. Without the look at the last name, a file in
// which half of the lines matter takes 1.5 times the CPU time.
RegisterIndex::Found RegisterIndex::find(std::string_view hierarchicalName) {
  if (hardwareName_.empty() || std::string_view(hardwareName_).substr(1) != hierarchicalName) {
    hardwareName_ = '/';
    hardwareName_ += hierarchicalName;
    searchKernels();
  }
  return {hardwareName_, matches_};
}

void RegisterIndex::searchKernels() {
  matches_.clear();
  const std::string_view name = hardwareName_;
  const std::size_t position = registers_.positionOf(name.substr(findLast(name, '/') + 1));
  if (position == PositionIndex::none) return;
  common_.find(position, pathSearch_.findIn(name), cheapPerByte * name.size(), matches_);
}

}  // namespace consolidator
