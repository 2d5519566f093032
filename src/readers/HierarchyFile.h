#pragma once

#include "readers/InputFile.h"

#include <string_view>

namespace consolidator {

/// Reader of the hierarchy metadata file of the system linker, which names the kernels of a design,
/// their kinds and the instance paths at which they are placed:
///
///     # comment up to the end of the line
///     version: 1.0
///     vadd:
///       type: clc
///       instance path: /top/vadd_1
///
/// The file is a sequence of words; line ends matter for comments only. Each word that is no
/// keyword starts a kernel, whose name is the word without its last character.
class HierarchyFile : public InputFile {
 public:
  /// The newest version of the format that is read.
  static constexpr float supportedVersion = 1.0F;

  using InputFile::InputFile;

  /// Appends one record for each kernel. Prints a message and returns false for a version above
  /// supportedVersion and for an "instance" without "path:"; nothing else is an error. A "version:"
  /// without a number ends the input there.
  bool parse() override;

 private:
  bool readWords();
  bool readVersion();
  bool readInstancePath();
  void startKernel(std::string_view header);
  void observeType(std::string_view word);
  void observePath(std::string_view path);
  void observeHeader(std::string_view header);

  bool anyKernel_ = false;  // whether parse() started a kernel
};

}  // namespace consolidator
