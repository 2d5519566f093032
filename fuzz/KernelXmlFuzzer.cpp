// Reads any bytes as a kernel XML document. What is read must be written and read again without a
// difference, and the reader of the tool must make of it, from a pipe that hands it out in pieces,
// the records that follow from its elements.

#include "../tests/support/StreamCapture.h"
#include "PipedText.h"
#include "PlainKernelXml.h"
#include "Require.h"
#include "model/KernelMerge.h"
#include "readers/KernelFile.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace consolidator {

namespace {

void requireReadsBack(const Devpack::Project& project) {
  const std::string written = project.writeToString();
  const std::optional<Devpack::Project> again = readProject(written);
  require(again.has_value(), "what was written can be read");
  require(*again == project, "what was written reads back");
  require(again->writeToString() == written, "what was read back is written alike");
}

void requirePlainRecords(const std::string& path, const Devpack::Project& project) {
  KernelFile reader(path.c_str());
  const StreamCapture capture;
  require(reader.isValid() && reader.parse(), "the document is accepted");
  require(reader.kernels() == PlainKernelXml(project).records(),
          "the records are those of the elements");
  KernelList expected;
  for (const KernelRecord& record : reader.kernels()) mergeKernel(expected, record);
  KernelList merged;
  reader.mergeInto(merged);
  require(merged == expected, "the records are merged one by one");
  require(capture.out().empty() && capture.err().empty(), "nothing is printed");
}

void readTwice(const std::string& document) {
  const std::optional<Devpack::Project> project = readProject(document);
  if (!project) return;
  requireReadsBack(*project);
  withPipe(document, [&](const std::string& path) { requirePlainRecords(path, *project); });
}

}  // namespace

}  // namespace consolidator

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  consolidator::readTwice(std::string(data, data + size));
  return 0;
}
