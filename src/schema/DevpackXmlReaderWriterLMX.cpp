#include "schema/DevpackXmlReaderWriterLMX.h"

#include "lmx60/XmlReader.h"
#include "lmx60/XmlWriter.h"

#include <fstream>
#include <sstream>
#include <string_view>
#include <utility>

namespace Devpack {

namespace {

constexpr std::string_view rootName = "project";

}  // namespace

Project::Project() = default;
Project::Project(const Project&) = default;
Project::Project(Project&&) noexcept = default;
Project& Project::operator=(const Project&) = default;
Project& Project::operator=(Project&&) noexcept = default;
Project::~Project() = default;

Project::Project(const char* fileName, lmx::error_code& errorCode) {
  lmx::c_xml_reader reader(fileName, errorCode);
  unmarshal(reader, rootName);
}

Project::Project(std::unique_ptr<lmx::c_byte_source> source, lmx::error_code& errorCode,
                 lmx::c_reading_observer* observer) {
  lmx::c_xml_reader reader(std::move(source), errorCode);
  if (observer != nullptr) reader.observe(*observer);
  unmarshal(reader, rootName);
}

lmx::error_code Project::writeToFile(const char* fileName) const {
  std::ofstream file(fileName, std::ios::binary);
  lmx::c_xml_writer writer(file);
  marshal(writer, rootName);
  return writer.finish();
}

std::string Project::writeToString() const {
  std::ostringstream text;
  lmx::c_xml_writer writer(text);
  marshal(writer, rootName);
  writer.finish();
  return std::move(text).str();
}

}  // namespace Devpack
