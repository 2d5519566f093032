#pragma once

#include "consolidated/List.h"

#include <cstdint>

namespace consolidated {

/// What a condition stands for. Files may hold other numbers, which stand for an error.
enum class ConditionKind : std::uint32_t {
  Start = 0,       ///< the kernel starts
  Stop = 1,        ///< the kernel finishes
  SourceLine = 2,  ///< a source position, given by file and line
};

/// A condition on which a debugger can stop a kernel.
class BreakableCondition {
 public:
  /// The number as stored, be it one of the enumerators or not.
  ConditionKind kind() const noexcept { return kind_; }

  /// The expression as stored; in prefix form as a rule.
  Text condition() const noexcept { return condition_; }

  /// The number of the source line; 0 unless the kind is `SourceLine`.
  std::uint32_t line() const noexcept { return line_; }

  /// The name of the source file; empty and at offset 0 unless the kind is `SourceLine`.
  Text file() const noexcept { return file_; }

  /// Where its record begins, in bytes from the start of the file.
  std::uint64_t offset() const noexcept { return condition_.offset() - 8; }

 private:
  friend struct detail::Decoder;

  bool read(detail::Cursor& in) noexcept {
    *this = BreakableCondition();
    std::uint32_t number = 0;
    if (!in.readU32(number) || !detail::Decoder::read(in, condition_)) return false;
    kind_ = static_cast<ConditionKind>(number);
    if (kind_ != ConditionKind::SourceLine) return true;
    return in.readU32(line_) && detail::Decoder::read(in, file_);
  }

  ConditionKind kind_ = ConditionKind::Start;
  Text condition_;
  std::uint32_t line_ = 0;
  Text file_;
};

}  // namespace consolidated
