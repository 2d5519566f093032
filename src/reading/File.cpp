#include "consolidated/File.h"

#include "reading/FileBytes.h"
#include "reading/SectionBytes.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

namespace consolidated {

namespace {

// The last section of a project name in front of a position in the table.
std::optional<Section> lastProject(const Sections& table, std::uint32_t end) {
  while (end > 0) {
    const Section section = table[--end];
    if (section.kind == SectionKind::ProjectName) return section;
  }
  return std::nullopt;
}

// Walks a range of kernels to its end, which tells the fault.
KernelIterator endOf(const Kernels& kernels) {
  KernelIterator at = kernels.begin();
  while (at != kernels.end()) ++at;
  return at;
}

int openDescriptor(const char* path) {
  int descriptor = -1;
  do {
    descriptor = ::open(path, O_RDONLY | O_CLOEXEC);
  } while (descriptor < 0 && errno == EINTR);
  return descriptor;
}

}  // namespace

Result<File> File::open(const char* path, Access access) noexcept {
  const int descriptor = openDescriptor(path);
  if (descriptor < 0) return Fault{FaultCode::CannotOpen, std::nullopt, 0, errno};
  Result<File> file = fromDescriptor(descriptor, access);
  close(descriptor);
  return file;
}

Result<File> File::fromDescriptor(int descriptor, Access access) noexcept {
  const std::string_view mapped = access == Access::Mapped ? mapFile(descriptor) : "";
  if (!mapped.empty()) {
    File file(mapped, true);
    if (const auto wrong = headerFault(mapped)) return *wrong;
    return file;
  }
  const Result<std::string_view> all = readFile(descriptor);
  if (!all) return all.fault();
  return File(*all, true);
}

Result<File> File::fromBytes(std::string_view bytes) noexcept {
  if (const auto wrong = headerFault(bytes)) return *wrong;
  return File(bytes, false);
}

File::File(File&& other) noexcept
    : bytes_(std::exchange(other.bytes_, {})), isMapping_(std::exchange(other.isMapping_, false)) {}

File& File::operator=(File&& other) noexcept {
  std::swap(bytes_, other.bytes_);
  std::swap(isMapping_, other.isMapping_);
  return *this;
}

File::~File() {
  // NOLINTNEXTLINE(*-const-cast): what is unmapped is not written to
  if (isMapping_) munmap(const_cast<char*>(bytes_.data()), bytes_.size());
}

std::int32_t File::majorVersion() const noexcept {
  return static_cast<std::int32_t>(detail::u32At(bytes_.data() + 4));
}

std::int32_t File::minorVersion() const noexcept {
  return static_cast<std::int32_t>(detail::u32At(bytes_.data() + 8));
}

std::uint32_t File::claimedSections() const noexcept { return detail::u32At(bytes_.data() + 12); }

Sections File::sections() const noexcept {
  const std::uint64_t room = (bytes_.size() - headerSize) / Sections::width;
  const std::uint64_t count = std::min<std::uint64_t>(claimedSections(), room);
  return Sections(bytes_.substr(headerSize, static_cast<std::size_t>(count * Sections::width)));
}

std::optional<Text> File::bytesOf(const Section& section) const noexcept {
  return sectionBytes(bytes_, section);
}

std::optional<Text> File::firstOf(SectionKind kind) const noexcept {
  for (const Section& section : sections()) {
    if (section.kind == kind) return bytesOf(section);
  }
  return std::nullopt;
}

Kernels File::kernelsBetween(std::uint32_t first, std::uint32_t end) const noexcept {
  KernelIterator before;
  before.bytes_ = bytes_;
  before.sections_ = sections();
  before.next_ = first;
  before.end_ = end;
  return Kernels(before);
}

Kernels File::kernels() const noexcept {
  const Sections table = sections();
  if (table.size() == claimedSections()) return kernelsBetween(0, table.size());
  KernelIterator none;
  const std::uint64_t end = headerSize + std::uint64_t{Sections::width} * table.size();
  none.fault_ = Fault{FaultCode::ShortTable, std::nullopt, end, 0};
  return Kernels(none);
}

Kernels File::kernels(const Section& section) const noexcept {
  const bool holdsKernels =
      section.kind == SectionKind::KernelRecords && section.index < sections().size();
  return kernelsBetween(section.index, section.index + (holdsKernels ? 1 : 0));
}

std::optional<Kernel> File::findKernel(std::string_view name) const noexcept {
  for (const Kernel& kernel : kernels()) {
    if (kernel.name().view() == name) return kernel;
  }
  return std::nullopt;
}

// What follows the last name in the table cannot change it, so it is not walked.
std::optional<Text> File::project() const noexcept {
  const Sections table = sections();
  if (table.size() != claimedSections()) return std::nullopt;
  const std::optional<Section> last = lastProject(table, table.size());
  if (!last) return std::nullopt;
  const KernelIterator end = endOf(kernelsBetween(0, last->index + 1));
  if (!end.fault()) return bytesOf(*last);
  const std::optional<Section> earlier = lastProject(table, *end.fault()->section);
  return earlier ? bytesOf(*earlier) : std::nullopt;
}

std::optional<Fault> File::fault() const noexcept { return endOf(kernels()).fault(); }

}  // namespace consolidated
