#pragma once

#include "consolidated/Fault.h"
#include "consolidated/Kernels.h"
#include "consolidated/Section.h"
#include "consolidated/Text.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace consolidated {

/// How the bytes of a file are obtained.
enum class Access {
  /// Mapped into memory: only what is looked at is read, so a file of any size opens at once and
  /// takes no memory of its own. If another process makes the file shorter, the system ends this
  /// one with SIGBUS when it looks at what is gone, unless it has a handler for that. This library
  /// sets none; a handler may map zeros over the page, since nothing here relies on bytes that it
  /// saw before. What cannot be mapped, such as a pipe, is read.
  Mapped,

  /// Read into memory, all of it: for pipes, and for files that may change.
  Read,
};

/// A consolidated file that is open for reading: its header, its table, and views of what it holds.
///
/// Opening a mapped file looks at the header only. An open file is const and keeps no state, so any
/// number of threads may use it at a time. Views refer to the bytes and hold as long as the file is
/// open, even if the object is moved: keep it in a variable, since `open(path)->kernels()` alone
/// closes the file before the first kernel is looked at. A file that was moved from may only be
/// assigned to or destroyed; moving to a file that is open exchanges the two.
///
/// Project and kernels are what `consolidator` itself reads when it adds to the file: section by
/// section in the order of the table, up to the first fault.
class File {
 public:
  /// Opens the file of this name. Waits where the system does, such as for the other end of a pipe.
  /// Faults: `CannotOpen`, `CannotRead`, `OutOfMemory`, `ShortHeader`, `WrongMagic`.
  [[gnu::visibility("default")]] static Result<File> open(const char* path,
                                                          Access access = Access::Mapped) noexcept;

  /// Takes the bytes that an open descriptor has from its position on; it stays open, and the
  /// caller's. Reading leaves the position at the end, mapping where it was. Faults as open().
  [[gnu::visibility("default")]] static Result<File> fromDescriptor(
      int descriptor, Access access = Access::Mapped) noexcept;

  /// Takes bytes that the caller keeps. Faults: `ShortHeader`, `WrongMagic`.
  [[gnu::visibility("default")]] static Result<File> fromBytes(std::string_view bytes) noexcept;

  [[gnu::visibility("default")]] File(File&& other) noexcept;
  [[gnu::visibility("default")]] File& operator=(File&& other) noexcept;
  File(const File&) = delete;
  File& operator=(const File&) = delete;
  [[gnu::visibility("default")]] ~File();

  /// All bytes of the file.
  std::string_view bytes() const noexcept { return bytes_; }

  /// Of the header, as stored. `consolidator` refuses files of a major version above 1 and does not
  /// look at the minor one.
  [[gnu::visibility("default")]] std::int32_t majorVersion() const noexcept;
  [[gnu::visibility("default")]] std::int32_t minorVersion() const noexcept;

  /// How many sections the header claims to be there.
  [[gnu::visibility("default")]] std::uint32_t claimedSections() const noexcept;

  /// The section table, as far as it is there.
  [[gnu::visibility("default")]] Sections sections() const noexcept;

  /// The bytes of a section of this file, from its offset cut to signed 32 bits on and as many as
  /// its clamped size says; none unless all of them are there.
  [[gnu::visibility("default")]] std::optional<Text> bytesOf(const Section& section) const noexcept;

  /// The bytes of the first section of that kind, as `consolidator` dumps them, whatever is wrong
  /// elsewhere; none where there is no such section or not all of its bytes. The time grows with
  /// the number of sections before it.
  [[gnu::visibility("default")]] std::optional<Text> firstOf(SectionKind kind) const noexcept;

  std::optional<Text> dwarf() const noexcept { return firstOf(SectionKind::Dwarf); }

  std::optional<Text> json() const noexcept { return firstOf(SectionKind::Json); }

  /// The project's name: that of the last such section before the first fault, or none. Walks the
  /// kernel records that come before that section in the table.
  [[gnu::visibility("default")]] std::optional<Text> project() const noexcept;

  /// All kernels up to the first fault, in all sections of kernel records.
  [[gnu::visibility("default")]] Kernels kernels() const noexcept;

  /// The kernels of one section of this file up to its first fault, as if it were the only section;
  /// none in a section of another kind.
  [[gnu::visibility("default")]] Kernels kernels(const Section& section) const noexcept;

  /// The first kernel of that name, if there is one. Walks the records up to it.
  [[gnu::visibility("default")]] std::optional<Kernel> findKernel(
      std::string_view name) const noexcept;

  /// Where `consolidator` would end the reading of the file early, or none. The JSON text is not
  /// looked at, since it makes that anew; see json(). Walks all records, each time.
  [[gnu::visibility("default")]] std::optional<Fault> fault() const noexcept;

  /// Whether there is no fault(). Walks all records, each time.
  bool complete() const noexcept { return !fault().has_value(); }

 private:
  File(std::string_view bytes, bool isMapping) noexcept : bytes_(bytes), isMapping_(isMapping) {}

  Kernels kernelsBetween(std::uint32_t first, std::uint32_t end) const noexcept;

  std::string_view bytes_;
  bool isMapping_ = false;  // which this object is to unmap
};

}  // namespace consolidated
