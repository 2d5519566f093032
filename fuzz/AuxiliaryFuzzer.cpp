// An auxiliary XML file must read as by a plain stream-based reader, in memory as well as from a
// pipe that hands it out in pieces.

#include "../tests/support/PlainAuxiliary.h"
#include "../tests/support/StreamCapture.h"
#include "PipedText.h"
#include "Require.h"
#include "readers/AuxiliaryXMLFile.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace consolidator {

namespace {

HdlReservedWords reservedWords() {
  HdlReservedWords words;
  buildHdlReservedWords(words);
  return words;
}

void requirePlainResult(AuxiliaryXMLFile& reader, const std::string& text,
                        const std::string& fileName) {
  static const HdlReservedWords words = reservedWords();
  const std::optional<KernelRecord> plain = PlainAuxiliaryReader(text, words).read();
  require(reader.isValid(), "the input can be opened");
  bool result = false;
  std::string messages;
  {
    const StreamCapture capture;
    result = reader.parse();
    messages = capture.out() + capture.err();
  }
  require(result == plain.has_value(), "the result is that of a plain reader");
  require(reader.kernels().size() == (plain ? 1U : 0U), "there is a record of an accepted file");
  require(!plain || reader.kernels().front() == *plain, "the record is that of a plain reader");
  require(messages == (plain ? "" : "Malformed auxiliary file: " + fileName + "\n"),
          "the message names a malformed file");
}

}  // namespace

}  // namespace consolidator

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(data, data + size);
  consolidator::AuxiliaryXMLFile inMemory("in memory", text);
  consolidator::requirePlainResult(inMemory, text, "in memory");
  consolidator::withPipe(text, [&](const std::string& path) {
    consolidator::AuxiliaryXMLFile piped(path.c_str());
    consolidator::requirePlainResult(piped, text, path);
  });
  return 0;
}
