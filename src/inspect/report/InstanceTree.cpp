#include "inspect/report/InstanceTree.h"

#include "inspect/report/KernelSection.h"
#include "inspect/report/PageParts.h"
#include "inspect/report/PageText.h"

#include <algorithm>

namespace consolidator::inspect {

namespace {

constexpr std::size_t longestPath = 1000;

// Browsers flatten what is nested deeper than some hundred elements.
constexpr int mostDepth = 40;

// By parts: what separates them comes before all that may stand in them.
bool isPathBefore(std::string_view a, std::string_view b) {
  return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
    const auto rank = [](char c) { return c == '/' ? -1 : static_cast<unsigned char>(c); };
    return rank(x) < rank(y);
  });
}

// Where the part of a path that begins at `start`, maybe with its separator, ends.
std::size_t endOfPart(std::string_view path, std::size_t start) {
  return std::min(path.find('/', start + 1), path.size());
}

// Whether a path begins with these parts.
bool hasParts(std::string_view path, std::string_view parts) {
  return path.starts_with(parts) && (path.size() == parts.size() || path[parts.size()] == '/');
}

// Where the last part ends that two paths have in common, whose first ones are the same.
std::size_t endOfCommon(std::string_view a, std::string_view b, std::size_t end) {
  while (end < a.size() && end < b.size()) {
    const std::size_t next = endOfPart(a, end);
    if (next != endOfPart(b, end) || a.substr(0, next) != b.substr(0, next)) break;
    end = next;
  }
  return end;
}

}  // namespace

void InstanceTree::add(std::string_view path, std::uint64_t kernel, std::string_view kernelName) {
  if (instances_.size() == mostPaths) return;
  instances_.push_back(
      {std::string(beginningOf(path, longestPath)), kernel, shortened(kernelName)});
}

void InstanceTree::finish() {
  std::stable_sort(instances_.begin(), instances_.end(), [](const Instance& a, const Instance& b) {
    return isPathBefore(a.path, b.path);
  });
}

// Instances whose paths are the same before `start`.
void InstanceTree::writeList(HtmlWriter& html, Iterator first, Iterator end, std::size_t start,
                             int depth) const {
  html.add(part::treeBegin);
  const bool isDeepest = depth == mostDepth;
  while (first != end) {
    const std::string_view path = first->path;
    const std::size_t stop = isDeepest ? path.size() : endOfPart(path, start);
    const auto next = std::find_if(first, end, [&](const Instance& instance) {
      return isDeepest ? instance.path != path : !hasParts(instance.path, path.substr(0, stop));
    });
    const std::size_t common = endOfCommon(path, std::prev(next)->path, stop);
    // Those that end here are the first, by their order.
    const auto longer = std::find_if(
        first, next, [&](const Instance& instance) { return instance.path.size() > common; });
    if (longer != first) writeLeaf(html, first, longer, start);
    if (longer != next) {
      html.add(part::treeBranch, path.substr(start, common - start));
      writeList(html, longer, next, common, depth + 1);
      html.add(part::treeBranchEnd);
    }
    first = next;
  }
  html.add(part::treeEnd);
}

void InstanceTree::writeLeaf(HtmlWriter& html, Iterator first, Iterator end, std::size_t start) {
  html.add(part::treeLeafBegin, std::string_view(first->path).substr(start));
  for (; first != end; ++first) {
    if (first->kernel < KernelSection::mostParts) {
      html.add(part::treeLeafKernel, first->kernel, first->kernelName);
    } else {
      html.add(part::treeLeafName, first->kernelName);
    }
  }
  html.add(part::treeLeafEnd);
}

}  // namespace consolidator::inspect
