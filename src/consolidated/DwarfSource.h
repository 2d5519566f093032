#pragma once

#include "consolidated/StdioFile.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>

namespace consolidator {

class RunObserver;
struct SectionEntry;

/// The DWARF that a consolidated file is saved with: the bytes of a section that it had when it was
/// read, or a file that was added. None at first.
class DwarfSource {
 public:
  /// Reads the bytes of a stored section into memory in place of those that were held; none if they
  /// cannot be read. No memory is taken for bytes that the file lacks.
  void readSection(std::FILE* in, const SectionEntry& entry);

  /// Opens the DWARF file at `path` and returns its size. Returns nothing, and changes nothing, for
  /// a file that cannot be read, is empty, or has 2 GiB or more. The file is held open and copied
  /// by write(), since it may be large: holding its bytes in memory would double the time that it
  /// takes.
  /// An observer, if there is one, is told the reason.
  std::optional<std::uint32_t> openFile(const std::string& path, RunObserver* observer = nullptr);

  /// Whether the section that is held has the bytes of a file from where it stands.
  bool isSameAs(std::FILE* file) const;

  /// Writes a section of `size` bytes and returns its size. Bytes from memory are cut to that size,
  /// since a foreign file may have several sections, of other sizes. The result is `size` however
  /// much there is to write or the stream takes; only a file that shrank since it was opened gives
  /// less.
  std::uint32_t write(std::FILE* out, std::uint32_t size) const;

 private:
  std::unique_ptr<char[]> bytes_;
  std::size_t size_ = 0;
  StdioFile file_;
};

}  // namespace consolidator
