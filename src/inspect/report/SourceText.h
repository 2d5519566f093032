#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator::inspect {

/// The text of a source file by its lines, of which it may have as many as bytes.
class SourceText {
 public:
  /// Takes a text of less than 4 GiB, of which memory is at most five times the size.
  explicit SourceText(std::string text);

  /// How many lines there are. What follows the last end of a line is one unless it is empty.
  std::size_t size() const { return starts_.size(); }

  /// A line below size() without its end, be that "\n" or "\r\n".
  std::string_view operator[](std::size_t line) const;

 private:
  std::string text_;
  std::vector<std::uint32_t> starts_;
};

}  // namespace consolidator::inspect
