#include "consolidated/Kernels.h"

#include "reading/SectionBytes.h"

namespace consolidated {

namespace {

constexpr std::uint32_t leastKernelSize = 32;

}  // namespace

KernelIterator Kernels::begin() const noexcept {
  KernelIterator first = first_;
  if (!first.fault_) ++first;
  return first;
}

KernelIterator& KernelIterator::operator++() noexcept {
  hasKernel_ = false;
  while (left_ == 0 && next_ < end_ && !fault_) visit(sections_[next_++]);
  if (left_ > 0) readKernel();
  return *this;
}

void KernelIterator::visit(const Section& section) noexcept {
  const std::optional<std::uint32_t> start = section.seekOffset();
  switch (section.kind) {
    case SectionKind::Json:
      return;
    case SectionKind::ProjectName:
    case SectionKind::Dwarf:
    case SectionKind::KernelRecords:
      if (!start) return stop(FaultCode::NegativeOffset, section.entryOffset());
      if (section.kind == SectionKind::KernelRecords) return startRecords(*start);
      if (!sectionBytes(bytes_, section)) stop(FaultCode::SectionOutside, section.entryOffset());
      return;
    default:
      return stop(FaultCode::UnknownKind, section.entryOffset());
  }
}

// Records are read up to the end of their list, whatever the size of their section.
void KernelIterator::startRecords(std::uint32_t offset) noexcept {
  in_ = detail::Cursor(bytes_, offset);
  if (!in_.readU32(left_)) return stop(FaultCode::RecordsShort, offset);
  // If the number of kernels cannot be right, the fault is at that number, not further in.
  if (left_ > in_.remaining() / leastKernelSize) in_.failAt(offset);
  count_ = offset;
}

void KernelIterator::readKernel() noexcept {
  hasKernel_ = kernel_.read(in_);
  if (hasKernel_) {
    --left_;
    kernel_.section_ = next_ - 1;
  } else {
    in_.failAt(count_);
    stop(FaultCode::RecordsShort, in_.failure());
  }
}

void KernelIterator::stop(FaultCode code, std::uint64_t offset) noexcept {
  left_ = 0;
  fault_ = Fault{code, next_ - 1, offset, 0};
}

}  // namespace consolidated
