#pragma once

#include "readers/InputFile.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>

namespace consolidator {

class InstancePathIndex;

/// Reader of the RAM utilization report of synthesis. It looks in two of the report's sections for
/// the block RAMs inside known kernel instances:
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
  /// The greatest length of a line in bytes. Longer ones are passed over.
  static constexpr std::size_t lineBound = 2047;

  /// Takes a kernel and the untrimmed name of a block RAM inside one of its instances.
  using BramSink = std::function<void(const KernelRecord& kernel, std::string_view bramName)>;

  /// The known kernels are read only; they must outlive the reader and keep their instance paths.
  RAMFile(const char* fileName, const KernelList& knownKernels)
      : InputFile(fileName), knownKernels_(knownKernels) {}

  /// Reads from a text in memory.
  RAMFile(const char* fileName, std::string_view text, const KernelList& knownKernels)
      : InputFile(fileName, text), knownKernels_(knownKernels) {}

  /// Reads the whole report. What is found is dropped: neither the known kernels nor kernels()
  /// change. Returns false only when the reader is not valid.
  bool parse() override;

  /// Reads the whole report and hands over each block RAM row for row; within a row kernel for
  /// kernel, and once for each instance path of the kernel that the name contains.
  void readBrams(const BramSink& addBram);

 private:
  void readTitle(std::string_view line);
  void readSectionLine(std::string_view line, InstancePathIndex& paths, const BramSink& addBram);
  bool isInSection() const;

  const KernelList& knownKernels_;
  std::uint32_t section_ = 0;  // number of the title read last that counted
  bool powerSeen_ = false;     // whether the title with the number 8 was read
};

}  // namespace consolidator
