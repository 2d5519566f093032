#pragma once

#include "readers/HdlReservedWords.h"
#include "readers/InputFile.h"

namespace Devpack {
struct Kernel;
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
/// The document is read through its typed binding, which opens the file once more by its name; of
/// what it holds, nothing else is used. It has the names of the hardware: one that is a reserved
/// word with "_r" behind it gets the reserved word back as its source name.
class KernelFile : public InputFile {
 public:
  /// Opens the file, as every reader does. The name must outlive the reader.
  explicit KernelFile(const char* fileName);

  /// Appends one record for each kernel, in document order. A document that cannot be read prints
  /// a message, gives no record and returns false.
  bool parse() override;

 private:
  void addKernel(const Devpack::Kernel& kernel);

  HdlReservedWords reservedWords_;
};

}  // namespace consolidator
