#pragma once

#include "consolidated/Cursor.h"
#include "consolidated/Fault.h"
#include "consolidated/Kernel.h"
#include "consolidated/Section.h"

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string_view>

namespace consolidated {

/// Goes forward over kernels, as often as wanted. Records do not state their lengths: each step
/// reads the whole next record, except the bits of its variables and registers, and checks that all
/// of it is there. It yields values, which is why C++17 counts it among the input iterators.
class KernelIterator {
 public:
  using iterator_concept = std::forward_iterator_tag;
  using iterator_category = std::input_iterator_tag;
  using value_type = Kernel;
  using difference_type = std::ptrdiff_t;
  using pointer = detail::Arrow<Kernel>;
  using reference = Kernel;

  /// The end of any range of kernels.
  KernelIterator() = default;

  Kernel operator*() const noexcept { return kernel_; }

  detail::Arrow<Kernel> operator->() const noexcept { return {kernel_}; }

  /// Reads the next kernel; there must be one at present.
  [[gnu::visibility("default")]] KernelIterator& operator++() noexcept;

  KernelIterator operator++(int) noexcept {
    const KernelIterator before = *this;
    ++*this;
    return before;
  }

  /// Once the end is reached: the fault that ended the range early, or none.
  const std::optional<Fault>& fault() const noexcept { return fault_; }

  /// Where the decoding stands, in bytes from the start of the file: once the end is reached
  /// without a fault, where the last record that was read ends.
  std::uint64_t offset() const noexcept { return in_.position(); }

  friend bool operator==(const KernelIterator& a, const KernelIterator& b) noexcept {
    return a.hasKernel_ == b.hasKernel_ &&
           (!a.hasKernel_ || (a.next_ == b.next_ && a.left_ == b.left_));
  }

  friend bool operator!=(const KernelIterator& a, const KernelIterator& b) noexcept {
    return !(a == b);
  }

 private:
  friend class File;
  friend class Kernels;

  void visit(const Section& section) noexcept;
  void startRecords(std::uint32_t offset) noexcept;
  void readKernel() noexcept;
  void stop(FaultCode code, std::uint64_t offset) noexcept;

  std::string_view bytes_;
  Sections sections_;
  detail::Cursor in_;        // at the end of the kernel
  std::uint64_t count_ = 0;  // where the number of kernels of its section stands
  std::uint32_t left_ = 0;   // kernels of its section that follow it
  std::uint32_t next_ = 0;   // first section that was not visited
  std::uint32_t end_ = 0;    // section before which to stop
  bool hasKernel_ = false;
  Kernel kernel_;
  std::optional<Fault> fault_;
};

/// Kernels in the order of the file: a range that reads them again each time it is iterated over.
class Kernels {
 public:
  using value_type = Kernel;
  using const_iterator = KernelIterator;
  using iterator = KernelIterator;

  /// Programs get kernels from a file.
  explicit Kernels(const KernelIterator& first) noexcept : first_(first) {}

  [[gnu::visibility("default")]] KernelIterator begin() const noexcept;

  // NOLINTNEXTLINE(*-to-static): belongs to a range
  KernelIterator end() const noexcept { return {}; }

 private:
  KernelIterator first_;
};

}  // namespace consolidated
