#include "readers/RAMFile.h"

#include <optional>

namespace consolidator {

namespace {

constexpr std::uint32_t inferredSection = 3;
constexpr std::uint32_t instantiatedSection = 6;

constexpr std::string_view inferredTitle = "3. Memory Utilization - Inferred";
constexpr std::string_view instantiatedTitle = "6. Memory Utilization - Instantiated";

bool isClosingTitle(std::string_view line) {
  return line == "4. Memory Performance - Inferred" ||
         line == "7. Memory Utilization - Instantiated";
}

}  // namespace

bool RAMFile::parse() {
  if (!isValid()) return false;
  while (const std::optional<BoundedLine> line = buffer_.readLine(lineBound)) {
    if (observer_ != nullptr) observeLine(*line);
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

void RAMFile::observeLine(const BoundedLine& line) {
  const std::string_view text = line.text;
  if (line.overBound) return ignore("a line over 2047 bytes");
  observeEnd(text);
  if (section_ == inferredSection || section_ == instantiatedSection) {
    if (text.starts_with('|')) ignore("a block RAM, since RAM reports add nothing", text);
  } else if (!powerSeen_ && (text == inferredTitle || text == instantiatedTitle)) {
    ignore("a section before the title with the number 8", text);
  }
}

void RAMFile::readTitle(std::string_view line) {
  if (line == "8. Block Ram / URAM Memory Power - Instantiated") {
    powerSeen_ = true;
  } else if (powerSeen_ && line == inferredTitle) {
    section_ = inferredSection;
  } else if (powerSeen_ && line == instantiatedTitle) {
    section_ = instantiatedSection;
  }
}

}  // namespace consolidator
