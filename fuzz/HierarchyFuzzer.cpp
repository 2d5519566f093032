// A hierarchy file must read as by a plain stream-based reader, in memory as well as from a pipe
// that hands it out in pieces.

#include "../tests/support/PiecewisePipe.h"
#include "../tests/support/PlainHierarchy.h"
#include "../tests/support/StreamCapture.h"
#include "Require.h"
#include "readers/HierarchyFile.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace consolidator {

namespace {

void requirePlainResult(HierarchyFile& reader, const std::string& text,
                        const std::string& fileName) {
  const PlainHierarchy plain = readHierarchyPlainly(text, fileName);
  bool result = false;
  std::string out;
  std::string err;
  {
    const StreamCapture capture;
    result = reader.parse();
    out = capture.out();
    err = capture.err();
  }
  require(result == plain.result, "the result is that of a plain reader");
  const float version = reader.version();
  require(std::memcmp(&version, &plain.version, sizeof version) == 0,
          "the version is that of a plain reader");
  require(reader.kernels() == plain.kernels, "the kernels are those of a plain reader");
  require(out.empty() && err == plain.messages, "the messages are those of a plain reader");
}

void readInMemory(const std::string& text) {
  HierarchyFile reader("in memory", std::string_view(text));
  requirePlainResult(reader, text, "in memory");
}

// The first byte of the text says how long the pieces are.
void readFromPipe(const std::string& text) {
  constexpr std::size_t longest = PiecewisePipe::mostPieces * PiecewisePipe::largestPiece / 2;
  if (text.empty() || text.size() > longest) return;
  const auto pieceSize = static_cast<unsigned char>(text.front());
  const PiecewisePipe pipe(pieces(text, std::size_t{pieceSize} + 1));
  const std::string path = pipe.path();
  HierarchyFile reader(path.c_str());
  require(reader.isValid(), "a pipe can be opened");
  requirePlainResult(reader, text, path);
}

}  // namespace

}  // namespace consolidator

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(data, data + size);
  consolidator::readInMemory(text);
  consolidator::readFromPipe(text);
  return 0;
}
