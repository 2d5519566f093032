#pragma once

#include "readers/InputFile.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace Devpack {
struct Kernel;
struct Project;
}  // namespace Devpack

namespace lmx {
class c_byte_source;
}

namespace consolidator {

/// Reader of the kernel XML of high-level synthesis: the arguments of each kernel, and the two
/// conditions that every block-controlled kernel has.
///
///     <project>
///       <platform>
///         <device>
///           <core>
///             <kernel name="vadd">
///               <arg name="begin_r" type="int*"/>
///
/// Nothing else in the document is used. It is read through its typed binding, which opens the file
/// once more by its name. It has the names of the hardware: a reserved word followed by "_r" stands
/// for a source name that is the reserved word.
class KernelFile : public InputFile {
 public:
  /// Opens the file, as every reader does. The name must outlive the reader.
  explicit KernelFile(const char* fileName);
  KernelFile(const KernelFile&) = delete;
  KernelFile& operator=(const KernelFile&) = delete;
  ~KernelFile() override;

  /// Reads the document. One that cannot be read prints a message, gives no record and returns
  /// false.
  bool parse() override;

  /// One record for each kernel, in document order, made when this is first called. Each holds the
  /// arguments of all kernels up to its own: n kernels with an argument each have n²/2 of them.
  const KernelSequence& kernels() override;

  /// Merges these records, of which it makes one at a time.
  void mergeInto(KernelList& known) override;

  InputExtent extent() override { return extent_; }

 private:
  template <typename Use>
  void forEachRecord(Use use) const;
  void setKernel(KernelRecord& record, const Devpack::Kernel& kernel) const;
  void readDocument();
  std::unique_ptr<lmx::c_byte_source> openSource() const;
  void observeArgument(KernelRecord& record, const VariableRecord& argument) const;

  std::unique_ptr<const Devpack::Project> project_;
  InputExtent extent_;             // of an observed reader
  std::uint64_t faultColumn_ = 0;  // of an observed reader: where the reading ended
};

}  // namespace consolidator
