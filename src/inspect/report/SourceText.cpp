#include "inspect/report/SourceText.h"

#include <algorithm>
#include <utility>

namespace consolidator::inspect {

SourceText::SourceText(std::string text) : text_(std::move(text)) {
  starts_.reserve(static_cast<std::size_t>(std::count(text_.begin(), text_.end(), '\n')) + 1);
  std::size_t start = 0;
  while (start < text_.size()) {
    starts_.push_back(static_cast<std::uint32_t>(start));
    start = std::min(text_.find('\n', start), text_.size() - 1) + 1;
  }
}

std::string_view SourceText::operator[](std::size_t line) const {
  const std::size_t start = starts_[line];
  const std::size_t end = line + 1 < size() ? starts_[line + 1] : text_.size();
  std::string_view text = std::string_view(text_).substr(start, end - start);
  if (text.ends_with('\n')) text.remove_suffix(1);
  if (text.ends_with('\r')) text.remove_suffix(1);
  return text;
}

}  // namespace consolidator::inspect
