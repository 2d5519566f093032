#pragma once

#include "lookup/KeyedHash.h"
#include "lookup/KeyedList.h"
#include "readers/HlsFunctionRecord.h"
#include "readers/InputFile.h"
#include "text/FieldReader.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator {

/// Line numbers are found by themselves.
struct LineNumberKey {
  std::uint32_t operator()(std::uint32_t line) const { return line; }

  static std::uint64_t hash(std::uint32_t line) { return keyedHash(std::uint64_t{line}); }
};

/// Reader of the debug metadata file that high-level synthesis writes for one kernel. It ties the
/// local variables of the source to registers, and each synthesised function to a source line:
///
///     # comment; blank lines and lines that begin with a space or a tab are comments too
///     Begin Function vadd
///     RTL vadd fsm (state == 3)
///     local sum
///     at vadd.cpp:12
///     reg: sum_next[31:0]
///     last sum_reg[31:0] vadd
///     End Function vadd
///
/// An RTL line starts a function record, named by the words from the fourth on. A block starts with
/// a "local" line and runs over all lines of two words with a ":" in the second: a register after
/// "reg:", a source position after anything else. The line after these closes the block; its
/// second word is the register that counts.
///
/// A function is complete when the next one starts. What it gives goes into the kernel record then,
/// so that a file of any size takes no more memory than its largest function and its result.
class HLSFile : public InputFile {
 public:
  /// The greatest length of a line in bytes.
  static constexpr std::size_t lineBound = 1023;

  using InputFile::InputFile;

  /// Appends one record, named for the file: its variables are the locals, its conditions one for
  /// each function with a source position. Prints nothing. Returns false for a line that is none
  /// of the above, a line over the bound, an "End Function" too many or too few, and a block before
  /// any RTL line. The end of the file closes a block as an empty line does.
  bool parse() override;

 private:
  bool readLine(std::string_view line);
  bool closeScope();
  void startFunction(FieldReader words);
  void finishFunction();
  bool readBlock(std::string_view localName);
  std::optional<std::string_view> readBlockLine();
  void observeIgnorable(std::string_view line);
  void observeDropped(std::string_view reason);
  void observeInBlock(std::string_view line, std::string_view first);
  void observeBlockEnd(std::string_view line, std::string_view first, std::string_view second);

  std::vector<std::string> functionScopes_;            // begun and not yet ended
  bool hasFunction_ = false;                           // whether there was an RTL line
  HlsFunctionRecord function_;                         // of the last RTL line
  KeyedList<std::uint32_t, LineNumberKey> usedLines_;  // the first ones of earlier functions
  KernelRecord kernel_;
  std::uint64_t functionStart_ = 0;  // the number of its RTL line, where that is observed
};

}  // namespace consolidator
