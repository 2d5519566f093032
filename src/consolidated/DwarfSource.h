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
  /// Takes the bytes of a stored section into memory; those that were held are dropped. There are
  /// none when they cannot be read, which is found without asking for memory.
  void readSection(std::FILE* in, const SectionEntry& entry);

  /// Opens the DWARF file at `path` and returns its size. Returns nothing, and changes nothing, for
  /// a file that cannot be read, is empty, or has 2 GiB or more. The file is held open and copied
  /// by write(), since it may be large: holding its bytes in memory would double the time that it
  /// takes.
  /// An observer, if there is one, is told the reason.
  std::optional<std::uint32_t> openFile(const std::string& path, RunObserver* observer = nullptr);

  /// Whether the section that is held has the bytes of the file at `path`.
  bool isSameAs(const std::string& path) const;

  /// Writes a section of so many bytes and returns its size. What is held is cut to that size; a
  /// foreign file may have several sections of other sizes than that of the bytes held. The size
  /// stays as it is however much there is to write or the stream takes; only a file that shrank
  /// since it was opened gives less.
  std::uint32_t write(std::FILE* out, std::uint32_t size) const;

 private:
  std::unique_ptr<char[]> bytes_;
  std::size_t size_ = 0;
  StdioFile file_;
};

}  // namespace consolidator
