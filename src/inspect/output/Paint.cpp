#include "inspect/output/Paint.h"

#include <fmt/format.h>

namespace consolidator::inspect {

namespace {

int codeOf(Paint paint) {
  switch (paint) {
    case Paint::Good:
      return 32;
    case Paint::Bad:
      return 31;
    case Paint::Doubtful:
      return 33;
    default:
      return 1;
  }
}

}  // namespace

std::string painted(Paint paint, std::string_view text, bool hasColour) {
  if (!hasColour) return std::string(text);
  return fmt::format("\x1B[{}m{}\x1B[0m", codeOf(paint), text);
}

}  // namespace consolidator::inspect
