#pragma once

#include <string>
#include <string_view>

namespace consolidator::inspect {

/// How a text looks on a terminal.
enum class Paint {
  Heading,
  Good,
  Bad,
  Doubtful,
};

/// The text as a terminal shows it in colour; unchanged where there is none. It must be plain
/// already.
std::string painted(Paint paint, std::string_view text, bool hasColour);

}  // namespace consolidator::inspect
