// Any bytes are opened as a consolidated file, dumped from and saved, twice over. Model and bytes
// must be those of a plain reader and writer of the format; and once a file was saved, saving it
// again changes nothing but the texts of conditions.

#include "../tests/support/MemoryFile.h"
#include "../tests/support/PlainContainer.h"
#include "Require.h"
#include "consolidated/ConsolidatedFile.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace consolidator {

namespace {

// What the driver checks before it goes on, be it a dump or not.
void requirePlainChecks(const ConsolidatedFile& file, const PlainContainer& plain) {
  const FileHeader::Bytes header = file.header().encode();
  require(std::string(header.data(), header.size()) == plain.header, "the header is as stored");
  require(file.projectName() == plain.projectName, "the project is that of a plain reader");
}

void requirePlainModel(const ConsolidatedFile& file, const PlainContainer& plain) {
  requirePlainChecks(file, plain);
  require(file.table() == plain.table, "the table is that of a plain reader");
  require(std::equal(file.kernels().begin(), file.kernels().end(), plain.kernels.begin(),
                     plain.kernels.end()),
          "the kernels are those of a plain reader");
}

void requirePlainDumps(const std::string& bytes) {
  const PlainContainer plain(bytes);
  const MemoryFile stored;
  const MemoryFile dumped;
  stored.write(bytes);
  ConsolidatedFile file;
  file.openOrCreate(stored.path(), false, true);
  requirePlainChecks(file, plain);
  for (const SectionKind kind : {SectionKind::ProjectName, SectionKind::Dwarf,
                                 SectionKind::KernelRecords, SectionKind::Json}) {
    file.dumpSection(kind, dumped.path());
    require(dumped.read() == plain.dump(kind), "a dump holds the bytes of its section");
  }
  file.close();
  require(stored.read() == bytes, "dumping does not change the file");
}

// What a run without any input makes of the file.
std::string saved(const std::string& bytes) {
  PlainContainer plain(bytes);
  const MemoryFile stored;
  stored.write(bytes);
  ConsolidatedFile file;
  file.openOrCreate(stored.path(), false, false);
  requirePlainModel(file, plain);
  file.save();
  file.close();
  std::string result = stored.read();
  require(result == plain.save(), "the saved bytes are those of a plain writer");
  return result;
}

// Several sections of one of these kinds are no sign of damage, but not stable: all records are
// written for each section of them, and each DWARF section is written from the bytes of the last.
bool hasSeveral(const PlainContainer& container, SectionKind kind) {
  return std::count_if(container.table.begin(), container.table.end(),
                       [&](const SectionEntry& entry) { return entry.kind == kind; }) > 1;
}

std::vector<KernelRecord> withoutConditionTexts(std::vector<KernelRecord> kernels) {
  for (KernelRecord& kernel : kernels) {
    kernel.breakableConditions.edit([](std::vector<BreakableCondition>& conditions) {
      for (BreakableCondition& condition : conditions) condition.condition.clear();
    });
  }
  return kernels;
}

void requireStable(const std::string& firstBytes, const std::string& secondBytes) {
  const PlainContainer first(firstBytes);
  if (!first.complete() || hasSeveral(first, SectionKind::Dwarf) ||
      hasSeveral(first, SectionKind::KernelRecords)) {
    return;
  }
  const PlainContainer second(secondBytes);
  require(second.complete(), "what was saved whole can be read whole");
  require(first.header == second.header, "saving again keeps the header");
  require(first.projectName == second.projectName, "saving again keeps the project");
  require(first.dwarf == second.dwarf, "saving again keeps the DWARF bytes");
  require(withoutConditionTexts(first.kernels) == withoutConditionTexts(second.kernels),
          "saving again keeps the kernels but for the texts of their conditions");
  require(
      std::equal(first.table.begin(), first.table.end(), second.table.begin(), second.table.end(),
                 [](const SectionEntry& a, const SectionEntry& b) { return a.kind == b.kind; }),
      "saving again keeps the order of the sections");
}

}  // namespace

}  // namespace consolidator

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(data, data + size);
  consolidator::requirePlainDumps(bytes);
  const std::string first = consolidator::saved(bytes);
  const std::string second = consolidator::saved(first);
  consolidator::requireStable(first, second);
  return 0;
}
