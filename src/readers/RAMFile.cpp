#include "readers/RAMFile.h"

#include <optional>

namespace consolidator {

namespace {

constexpr std::uint32_t inferredSection = 3;
constexpr std::uint32_t instantiatedSection = 6;

bool isClosingTitle(std::string_view line) {
  return line == "4. Memory Performance - Inferred" ||
         line == "7. Memory Utilization - Instantiated";
}

}  // namespace

bool RAMFile::parse() {
  if (!isValid()) return false;
  while (const std::optional<BoundedLine> line = buffer_.readLine(lineBound)) {
    readLine(line->text);
    if (line->overBound) buffer_.skipLine();
    buffer_.skipWhiteSpace();
  }
  return true;
}

// A report must not change what is known of the kernels: block RAMs would go to working copies that
// are dropped at once, so rows are not matched with kernels at all. Odd, but to be kept: either
// closing title closes either section.
void RAMFile::readLine(std::string_view line) {
  if (section_ != inferredSection && section_ != instantiatedSection) {
    readTitle(line);
  } else if (isClosingTitle(line)) {
    ++section_;
  }
}

void RAMFile::readTitle(std::string_view line) {
  if (line == "8. Block Ram / URAM Memory Power - Instantiated") {
    powerSeen_ = true;
  } else if (powerSeen_ && line == "3. Memory Utilization - Inferred") {
    section_ = inferredSection;
  } else if (powerSeen_ && line == "6. Memory Utilization - Instantiated") {
    section_ = instantiatedSection;
  }
}

}  // namespace consolidator
