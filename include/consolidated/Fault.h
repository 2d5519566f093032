#pragma once

#include <cstdint>
#include <optional>
#include <utility>

namespace consolidated {

/// What may be wrong with a consolidated file, or with getting at its bytes.
enum class FaultCode : std::uint32_t {
  CannotOpen,      ///< the system cannot open the file
  CannotRead,      ///< the system cannot read the file
  OutOfMemory,     ///< there is no memory for the bytes, or no room to map them
  ShortHeader,     ///< the file is shorter than the header of 16 bytes
  WrongMagic,      ///< the file does not begin with the magic number
  ShortTable,      ///< the table claims more entries than the file holds
  UnknownKind,     ///< a section of a kind above 3
  NegativeOffset,  ///< a section whose offset, cut to signed 32 bits, is negative
  SectionOutside,  ///< a project name or DWARF section with bytes beyond the end of the file
  RecordsShort,    ///< the kernel records ask for bytes beyond the end of the file
};

/// Why a file could not be opened, or where the reading of an opened one ends: a plain value.
struct Fault {
  FaultCode code = FaultCode::CannotOpen;

  /// Position in the table of the section concerned; none if it does not concern a single one.
  std::optional<std::uint32_t> section;

  /// Where, in bytes from the start of the file: of `ShortTable` the first entry that is not whole;
  /// of `UnknownKind`, `NegativeOffset` and `SectionOutside` the table entry; of `RecordsShort` the
  /// count or length that asks for more than there is: one for which even the shortest elements
  /// would not fit, else the innermost one around the place where bytes are missing. Where not even
  /// the number of kernels is there, its place. 0 for the others.
  std::uint64_t offset = 0;

  /// The system's error number (`errno`) of `CannotOpen` and `CannotRead`; 0 for the others.
  int systemError = 0;

  /// A sentence in English without line end and without numbers. It is never freed.
  [[gnu::visibility("default")]] const char* sentence() const noexcept;

  /// A short name of the code that does not change between versions, such as "records-short". It is
  /// never freed.
  [[gnu::visibility("default")]] const char* name() const noexcept;
};

/// A value, or the fault that explains why there is none.
template <typename T>
class Result {
 public:
  // NOLINTNEXTLINE(google-explicit-constructor): a function returns either of them as it is
  Result(T&& value) noexcept : value_(std::move(value)) {}

  // NOLINTNEXTLINE(google-explicit-constructor)
  Result(const Fault& fault) noexcept : fault_(fault) {}

  /// Whether there is a value.
  explicit operator bool() const noexcept { return value_.has_value(); }

  /// The value; there must be one.
  T& operator*() noexcept { return *value_; }

  const T& operator*() const noexcept { return *value_; }

  T* operator->() noexcept { return &*value_; }

  const T* operator->() const noexcept { return &*value_; }

  /// Why there is no value; without meaning if there is one.
  const Fault& fault() const noexcept { return fault_; }

 private:
  std::optional<T> value_;
  Fault fault_;
};

}  // namespace consolidated
