#pragma once

#include "consolidated/File.h"
#include "inspect/lines/LimitedChild.h"
#include "inspect/lines/SourceLines.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace consolidator::inspect {

/// Whether there are line tables to ask.
enum class LineTableState { Read, None, Unreadable };

/// "read", "none" or "unreadable".
std::string_view nameOf(LineTableState state);

/// The line tables in the DWARF section of a file: tells for which source lines there is code.
///
/// They are read in a child process with limits on time and memory, so a file may hold anything.
/// Links from it to other files are not followed.
///
///     const LineTables tables = LineTables::of(input.file());
///     const bool isThere = tables.pathOf(condition.file().view(), condition.line()).has_value();
class LineTables {
 public:
  /// Reads those of the section that the tool dumps. Takes a time and memory in proportion to it.
  static LineTables of(const consolidated::File& file);

  /// The same within these limits.
  static LineTables of(std::string_view dwarf, const ChildLimits& limits);

  /// Takes what was read.
  explicit LineTables(SourceLines lines);

  LineTableState state() const { return state_; }

  /// Why all or some of them are missing, without the file's name; empty where none is. May hold
  /// anything.
  const std::string& problem() const { return problem_; }

  /// The path of a source file of which the components of `file` are the last ones, and which has
  /// code for that line; it is resolved against the compile directory, and may hold anything. Where
  /// there are several, always the same. Takes a time that grows with the length of `file`.
  std::optional<std::string_view> pathOf(std::string_view file, std::uint32_t line) const;

 private:
  // A file, by its rank in the order of the reversed paths, that has a line.
  struct Line {
    std::uint32_t line;
    std::uint32_t rank;

    friend bool operator<(const Line& a, const Line& b) {
      return std::tie(a.line, a.rank) < std::tie(b.line, b.rank);
    }
  };

  struct SourceFile {
    std::string reversed;  // its components
    std::string path;
  };

  LineTables(LineTableState state, std::string problem);

  LineTableState state_;
  std::string problem_;
  std::vector<SourceFile> files_;  // by reversed path
  std::vector<Line> lines_;        // sorted
};

}  // namespace consolidator::inspect
