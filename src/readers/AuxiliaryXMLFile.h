#pragma once

#include "readers/InputFile.h"

#include <cstddef>
#include <string_view>

namespace consolidator {

/// Reader of the `*_auxiliary.xml` file that high-level synthesis writes next to a kernel: the name
/// of the kernel's function and, for each argument, its source name and whether it is a stream.
///
///     <ak:acceleratorMap ak:functionName="vadd">
///       <ak:arg ak:originalName="begin_r" ak:busTypeRef="acc_fifo"/>
///
/// The file is not parsed as XML. Lines are recognised by their first word, attributes by the start
/// of a word, and values are cut out of a word at fixed positions.
class AuxiliaryXMLFile : public InputFile {
 public:
  /// The greatest length of a line in bytes.
  static constexpr std::size_t lineBound = 1023;

  using InputFile::InputFile;

  /// Appends one record with the arguments of all lines, whatever they hold. Prints a message and
  /// returns false for an attribute word that ends where its value should start, and for a line
  /// over the bound.
  bool parse() override;

 private:
  void observeLine(std::string_view line, KernelRecord& kernel);
};

}  // namespace consolidator
