// A debug file of high-level synthesis must read as by a plain stream-based reader, in memory as
// well as from a pipe that hands it out in pieces.

#include "../tests/support/PlainHls.h"
#include "PipedText.h"
#include "Require.h"
#include "readers/HLSFile.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace consolidator {

namespace {

void requirePlainResult(HLSFile& reader, const std::string& text, const std::string& fileName) {
  const std::optional<KernelRecord> plain = PlainHlsReader(text, fileName).read();
  require(reader.isValid(), "the input can be opened");
  require(reader.parse() == plain.has_value(), "the result is that of a plain reader");
  require(reader.kernels().size() == (plain ? 1U : 0U), "there is a record of an accepted file");
  require(!plain || reader.kernels().front() == *plain, "the record is that of a plain reader");
}

}  // namespace

}  // namespace consolidator

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(data, data + size);
  consolidator::HLSFile inMemory("folder/kernel.dbg", text);
  consolidator::requirePlainResult(inMemory, text, "folder/kernel.dbg");
  consolidator::withPipe(text, [&](const std::string& path) {
    consolidator::HLSFile piped(path.c_str());
    consolidator::requirePlainResult(piped, text, path);
  });
  return 0;
}
