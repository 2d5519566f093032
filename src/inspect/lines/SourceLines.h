#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator::inspect {

/// The lines of a source file for which there is code.
struct SourceFileLines {
  std::string path;                  ///< absolute, if it is known from where it is relative
  std::vector<std::uint32_t> lines;  ///< ascending, each once
};

/// What line tables say.
struct SourceLines {
  std::vector<SourceFileLines> files;  ///< with different paths
  std::string problem;                 ///< why something is missing, or empty
  bool isRead = false;                 ///< false if all is missing
};

/// The bytes by which one process tells it to another.
std::string encode(const SourceLines& lines);

/// What such bytes tell; nothing if they are others.
std::optional<SourceLines> decode(std::string_view bytes);

}  // namespace consolidator::inspect
