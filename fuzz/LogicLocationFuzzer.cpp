// A logic-location file must read as by a plain stream-based reader that tries every path and
// register on every line, in memory as well as from a pipe that hands it out in pieces.
//
// An input is the file, or a description of kernels, a byte 1 and the file. The description is made
// of words: K starts a kernel, P, A, V and H with a text after them add an instance path, an
// argument or a variable with that register, or a hardware variable.

#include "../tests/support/PlainLogicLocations.h"
#include "PipedText.h"
#include "Require.h"
#include "readers/LLFile.h"

#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

namespace consolidator {

namespace {

void describeKernel(KernelRecord& kernel, const std::string& word) {
  const std::string text = word.substr(1);
  switch (word.front()) {
    case 'P':
      return kernel.addInstancePath(text);
    case 'A':
      return kernel.addArgument(text, text, "int");
    case 'V':
      return kernel.addVariable(text, text, "int");
    case 'H':
      return kernel.setLogicLocation(text, 1, 2, 3);
    default:
      kernel.name += word;
  }
}

// The kernels of a description, after two that are always there.
KernelList kernelsOf(const std::string& description) {
  KernelList kernels;
  std::istringstream words("P/top/u0 P/top/u1 Aacc Vdone K P/top P Vacc V K " + description + " K");
  KernelRecord kernel;
  std::string word;
  while (words >> word) {
    if (word == "K") {
      kernels.append(kernel);
      kernel = KernelRecord();
    } else {
      describeKernel(kernel, word);
    }
  }
  return kernels;
}

void requirePlainResult(LLFile& reader, const std::string& text, const KernelList& kernels) {
  const KernelSequence plain = readLogicLocationsPlainly(text, {kernels.begin(), kernels.end()});
  require(reader.isValid(), "the input can be opened");
  reader.setKernels(kernels);
  require(reader.parse(), "a file that can be read is never refused");
  require(reader.kernels() == plain, "the kernels are those of a plain reader");
}

}  // namespace

}  // namespace consolidator

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string input(data, data + size);
  const std::size_t end = input.find('\1');
  const std::string description = end == std::string::npos ? "" : input.substr(0, end);
  const std::string text = end == std::string::npos ? input : input.substr(end + 1);
  if (consolidator::holdsLargeIndex(text)) return 0;
  const consolidator::KernelList kernels = consolidator::kernelsOf(description);
  consolidator::LLFile inMemory("in memory", text);
  consolidator::requirePlainResult(inMemory, text, kernels);
  consolidator::withPipe(text, [&](const std::string& path) {
    consolidator::LLFile piped(path.c_str());
    consolidator::requirePlainResult(piped, text, kernels);
  });
  return 0;
}
