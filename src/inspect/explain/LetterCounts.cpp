#include "inspect/explain/LetterCounts.h"

#include <limits>

namespace consolidator::inspect {

LetterCounts::LetterCounts(std::string_view text) : size_(text.size()) {
  for (const char c : text) {
    std::uint8_t& count = counts_[static_cast<unsigned char>(c) % letters];
    if (count < std::numeric_limits<std::uint8_t>::max()) ++count;
  }
}

}  // namespace consolidator::inspect
