#include "inspect/output/Numbered.h"

#include <fmt/format.h>

namespace consolidator::inspect {

std::string numbered(std::uint64_t count, std::string_view noun) {
  return fmt::format("{} {}{}", count, noun, count == 1 ? "" : "s");
}

}  // namespace consolidator::inspect
