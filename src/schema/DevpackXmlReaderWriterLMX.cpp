#include "schema/DevpackXmlReaderWriterLMX.h"

#include "lmx60/XmlReader.h"
#include "lmx60/XmlWriter.h"
#include "schema/DevpackFields.h"
#include "schema/ElementEngine.h"

#include <fstream>
#include <sstream>
#include <string_view>
#include <utility>

namespace Devpack {

namespace {

constexpr std::string_view rootName = "project";

}  // namespace

Project::Project(const char* fileName, lmx::error_code& errorCode) {
  lmx::c_xml_reader reader(fileName, errorCode);
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

template class Element<Version>;
template class Element<Interface>;
template class Element<Interfaces>;
template class Element<Memory>;
template class Element<Memories>;
template class Element<Image>;
template class Element<Images>;
template class Element<Id>;
template class Element<Board>;
template class Element<Host>;
template class Element<Clock>;
template class Element<SystemClocks>;
template class Element<KernelClocksClock>;
template class Element<KernelClocks>;
template class Element<RtlPort>;
template class Element<ModuleType>;
template class Element<Port>;
template class Element<Arg>;
template class Element<CompileWorkGroupSize>;
template class Element<MaxWorkGroupSize>;
template class Element<FormatString>;
template class Element<StringTable>;
template class Element<AddrRemap>;
template class Element<Instance>;
template class Element<InterfaceList>;
template class Element<FIFOInst>;
template class Element<FIFOInformation>;
template class Element<Kernel>;
template class Element<Connection>;
template class Element<CoreMemoriesInstanceAddrRemap>;
template class Element<CoreMemoriesInstance>;
template class Element<CoreMemories>;
template class Element<PipesInstance>;
template class Element<Pipes>;
template class Element<Slot>;
template class Element<ProfilersInstance>;
template class Element<Profilers>;
template class Element<Core>;
template class Element<Device>;
template class Element<Platform>;
template class Element<Project>;

}  // namespace Devpack
