#pragma once

#include "lookup/KeyedList.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <tuple>

namespace consolidator {

class ByteReader;
class ByteWriter;

/// What a breakable condition stands for. Files may hold other numbers; they are kept, and rendered
/// as `Error`.
enum class ConditionKind : std::uint32_t {
  Start = 0,       ///< the kernel starts
  Stop = 1,        ///< the kernel finishes
  SourceLine = 2,  ///< a source position, given by file and line
  Error = 3,       ///< none of these; not used here, but other code relies on the name
};

/// A condition on which a debugger can stop a kernel.
struct BreakableCondition {
  ConditionKind kind = ConditionKind::Start;
  std::string condition;   ///< the expression; in prefix form once it was prepared
  std::uint32_t line = 0;  ///< meaningful for SourceLine only
  std::string file;        ///< meaningful for SourceLine only
  bool valid = false;      ///< complete; neither stored nor rendered

  BreakableCondition() = default;

  BreakableCondition(ConditionKind conditionKind, std::string_view text)
      : kind(conditionKind), condition(text), valid(true) {}

  /// Appends the binary form: kind and condition, and for SourceLine also line and file. Returns
  /// how many bytes the writer took.
  std::uint64_t writeBinary(ByteWriter& out) const;

  /// Reads the binary form into this default-made record and sets `valid` at the end. A short
  /// read returns false and keeps what was read so far.
  bool readBinary(ByteReader& in);

  /// Skips a binary form. Returns false where readBinary() does.
  static bool skipBinary(ByteReader& in);

  /// Compares kind, condition, line and file whatever the kind; `valid` takes no part.
  friend bool operator==(const BreakableCondition& a, const BreakableCondition& b) {
    return a.kind == b.kind && a.condition == b.condition && a.line == b.line && a.file == b.file;
  }
};

/// Conditions are found by all that equality compares.
struct BreakableConditionKey {
  using Key = std::tuple<ConditionKind, std::string_view, std::uint32_t, std::string_view>;

  Key operator()(const BreakableCondition& condition) const {
    return {condition.kind, condition.condition, condition.line, condition.file};
  }

  // The size between the texts keeps "ab" and "c" apart from "a" and "bc".
  static std::uint64_t hash(const Key& key) {
    const auto& [kind, condition, line, file] = key;
    KeyedHash hash(HashSeed::ofProcess());
    hash.add(std::uint64_t{static_cast<std::uint32_t>(kind)} << 32U | line);
    hash.add(file.size());
    hash.add(file);
    hash.add(condition);
    return hash.finish();
  }
};

using BreakableConditionList = KeyedList<BreakableCondition, BreakableConditionKey>;

}  // namespace consolidator
