#include "inspect/lines/SourceLineSet.h"

#include <algorithm>

namespace consolidator::inspect {

std::uint32_t SourceLineSet::file(std::string_view path) {
  const auto number = static_cast<std::uint32_t>(numbers_.size());
  return numbers_.emplace(path, number).first->second;
}

void SourceLineSet::add(std::uint32_t file, std::uint32_t line) {
  const std::pair added(file, line);
  if (!lines_.empty() && lines_.back() == added) return;
  if (lines_.size() >= enough_) {
    dropRepeated();
    enough_ = std::max(enough_, 2 * lines_.size());
  }
  lines_.push_back(added);
}

void SourceLineSet::dropRepeated() {
  std::sort(lines_.begin(), lines_.end());
  lines_.erase(std::unique(lines_.begin(), lines_.end()), lines_.end());
}

std::vector<SourceFileLines> SourceLineSet::take() {
  dropRepeated();
  std::vector<SourceFileLines> files(numbers_.size());
  for (const auto& [path, number] : numbers_) files[number].path = path;
  for (const auto& [number, line] : lines_) files[number].lines.push_back(line);
  std::erase_if(files, [](const SourceFileLines& file) { return file.lines.empty(); });
  return files;
}

}  // namespace consolidator::inspect
