#pragma once

#include "readers/InputFile.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace consolidator {

/// Reader of the RAM utilization report of synthesis. Two of the report's sections have a table of
/// block RAMs, named by their places in the hierarchy of instances:
///
///     8. Block Ram / URAM Memory Power - Instantiated
///     3. Memory Utilization - Inferred
///     --------------------------------
///     |/top/vadd_1/buffer_reg|RAMB36E2|
///     4. Memory Performance - Inferred
///
/// Sections begin and end with a title that is a whole line. No section begins before the title
/// with the number 8 was read.
class RAMFile : public InputFile {
 public:
  /// The greatest length of a line in bytes. Longer ones are ignored.
  static constexpr std::size_t lineBound = 2047;

  /// The known kernels are read only; they must outlive the reader.
  RAMFile(const char* fileName, const KernelList& knownKernels)
      : InputFile(fileName), knownKernels_(knownKernels) {}

  /// Reads from a text in memory.
  RAMFile(const char* fileName, std::string_view text, const KernelList& knownKernels)
      : InputFile(fileName, text), knownKernels_(knownKernels) {}

  /// Reads the whole report, which changes neither the known kernels nor kernels(). Returns false
  /// only when the reader is not valid.
  bool parse() override;

  /// The kernels whose block RAMs the report may list.
  const KernelList& knownKernels() const { return knownKernels_; }

  /// Where in the report the reader is: 3 or 6 inside the section of that number, 4 or 7 after it,
  /// 0 before the first one.
  std::uint32_t section() const { return section_; }

  /// Whether the title with the number 8 was read.
  bool powerSeen() const { return powerSeen_; }

 private:
  void readLine(std::string_view line);
  void readTitle(std::string_view line);
  void observeLine(const BoundedLine& line);

  const KernelList& knownKernels_;
  std::uint32_t section_ = 0;
  bool powerSeen_ = false;
};

}  // namespace consolidator
