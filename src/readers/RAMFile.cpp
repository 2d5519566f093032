#include "readers/RAMFile.h"

#include "readers/InstancePathIndex.h"
#include "readers/RamRow.h"

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

// Every addition goes to a working copy of the kernel that is dropped at once, deliberately: a
// report must not change what is known of the kernels.
bool RAMFile::parse() {
  if (!isValid()) return false;
  readBrams([](const KernelRecord& /*kernel*/, std::string_view /*bramName*/) {});
  return true;
}

void RAMFile::readBrams(const BramSink& addBram) {
  InstancePathIndex paths(knownKernels_, lineBound);
  while (const std::optional<BoundedLine> line = buffer_.readLine(lineBound)) {
    if (isInSection()) {
      readSectionLine(line->text, paths, addBram);
    } else {
      readTitle(line->text);
    }
    if (line->overBound) buffer_.skipLine();
    buffer_.skipWhiteSpace();
  }
}

bool RAMFile::isInSection() const {
  return section_ == inferredSection || section_ == instantiatedSection;
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

// Either closing title closes either section, deliberately.
void RAMFile::readSectionLine(std::string_view line, InstancePathIndex& paths,
                              const BramSink& addBram) {
  if (line.starts_with('-')) return;
  if (isClosingTitle(line)) {
    ++section_;
    return;
  }
  const std::optional<RamRow> row = RamRow::split(line);
  if (!row || !row->isBlockRam()) return;
  for (const KernelRecord* kernel : paths.kernelsIn(row->instanceName)) {
    addBram(*kernel, row->instanceName);
  }
}

}  // namespace consolidator
