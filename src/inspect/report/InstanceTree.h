#pragma once

#include "inspect/report/HtmlWriter.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator::inspect {

/// The instances of all kernels as a tree of the parts of their paths. It keeps so many of them.
class InstanceTree {
 public:
  static constexpr std::size_t mostPaths = 1000;

  /// Adds an instance of a kernel, which is the one of that number on the page.
  void add(std::string_view path, std::uint64_t kernel, std::string_view kernelName);

  std::size_t size() const { return instances_.size(); }

  /// Orders what was added, which is to be done before it is written.
  void finish();

  void write(HtmlWriter& html) const {
    writeList(html, instances_.begin(), instances_.end(), 0, 0);
  }

 private:
  struct Instance {
    std::string path;
    std::uint64_t kernel = 0;
    std::string kernelName;
  };

  using Iterator = std::vector<Instance>::const_iterator;

  void writeList(HtmlWriter& html, Iterator first, Iterator end, std::size_t start,
                 int depth) const;
  static void writeLeaf(HtmlWriter& html, Iterator first, Iterator end, std::size_t start);

  std::vector<Instance> instances_;
};

}  // namespace consolidator::inspect
