// Any bytes are opened as a consolidated file, dumped from and saved, twice over. Model and bytes
// must be those of a plain reader and writer of the format; what was saved reads back as it was;
// and saving it again changes nothing but the texts of conditions.

#include "../tests/support/MemoryFile.h"
#include "../tests/support/PlainContainer.h"
#include "Require.h"
#include "StableSave.h"
#include "consolidated/ConsolidatedFile.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

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
  requireReadsBack(plain, result);
  return result;
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
