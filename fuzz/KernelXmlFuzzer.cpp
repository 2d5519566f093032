// Reads any bytes as a kernel XML document. What is read must be written and read again without a
// difference.

#include "lmx60/LmxException.h"
#include "lmx60/MemorySource.h"
#include "lmx60/XmlReader.h"
#include "schema/DevpackXmlReaderWriterLMX.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

namespace {

Devpack::Project readProject(std::string_view document) {
  lmx::error_code result{};
  lmx::c_xml_reader reader(std::make_unique<lmx::c_memory_source>(document), result);
  Devpack::Project project;
  project.unmarshal(reader, "project");
  if (result != lmx::error_code::ok) std::abort();
  return project;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string document(data, data + size);
  Devpack::Project project;
  try {
    project = readProject(document);
  } catch (const lmx::c_lmx_exception&) {
    return 0;
  }
  const std::string written = project.writeToString();
  const Devpack::Project again = readProject(written);
  if (again != project || again.writeToString() != written) std::abort();
  return 0;
}
