#pragma once

#include "schema/DevpackXmlReaderWriterLMX.h"
#include "schema/Field.h"

// The names by which the members of the element classes go in the document, in the order in which
// they are written.
namespace Devpack {

template <>
inline constexpr auto fieldsOf<Version> = fields(Field("major", &Version::major),
                                                 Field("minor", &Version::minor));

template <>
inline constexpr auto fieldsOf<Interface> = fields(Field("id", &Interface::id),
                                                   Field("name", &Interface::name),
                                                   Field("type", &Interface::type));

template <>
inline constexpr auto fieldsOf<Interfaces> = fields(Field("interface", &Interfaces::interface));

template <>
inline constexpr auto fieldsOf<Memory> = fields(Field("name", &Memory::name),
                                                Field("type", &Memory::type),
                                                Field("size", &Memory::size));

template <>
inline constexpr auto fieldsOf<Memories> = fields(Field("memory", &Memories::memory));

template <>
inline constexpr auto fieldsOf<Image> = fields(Field("name", &Image::name),
                                               Field("type", &Image::type));

template <>
inline constexpr auto fieldsOf<Images> = fields(Field("directory", &Images::directory),
                                                Field("image", &Images::image));

template <>
inline constexpr auto fieldsOf<Id> = fields(Field("vendor", &Id::vendor),
                                            Field("device", &Id::device),
                                            Field("subsystem", &Id::subsystem));

template <>
inline constexpr auto fieldsOf<Board> =
    fields(Field("name", &Board::name), Field("vendor", &Board::vendor),
           Field("fpga", &Board::fpga), Field("interfaces", &Board::interfaces),
           Field("memories", &Board::memories), Field("images", &Board::images),
           Field("id", &Board::id), Field("build_flow", &Board::buildFlow));

template <>
inline constexpr auto fieldsOf<Host> = fields(Field("architecture", &Host::architecture));

template <>
inline constexpr auto fieldsOf<Clock> = fields(Field("port", &Clock::port),
                                               Field("frequency", &Clock::frequency),
                                               Field("name", &Clock::name));

template <>
inline constexpr auto fieldsOf<SystemClocks> = fields(Field("clock", &SystemClocks::clock));

template <>
inline constexpr auto fieldsOf<KernelClocksClock> = fields(Field("port", &KernelClocksClock::port),
                                                           Field("frequency",
                                                                 &KernelClocksClock::frequency),
                                                           Field("name", &KernelClocksClock::name));

template <>
inline constexpr auto fieldsOf<KernelClocks> = fields(Field("clock", &KernelClocks::clock));

template <>
inline constexpr auto fieldsOf<RtlPort> = fields(Field("name", &RtlPort::name),
                                                 Field("object", &RtlPort::object),
                                                 Field("protocol", &RtlPort::protocol));

template <>
inline constexpr auto fieldsOf<ModuleType> = fields(Field("name", &ModuleType::name),
                                                    Field("instName", &ModuleType::instName),
                                                    Field("type", &ModuleType::type),
                                                    Field("rtlPort", &ModuleType::rtlPort),
                                                    Field("module", &ModuleType::module));

template <>
inline constexpr auto fieldsOf<Port> = fields(Field("name", &Port::name),
                                              Field("mode", &Port::mode),
                                              Field("range", &Port::range),
                                              Field("dataWidth", &Port::dataWidth),
                                              Field("portType", &Port::portType),
                                              Field("base", &Port::base));

template <>
inline constexpr auto fieldsOf<Arg> = fields(
    Field("name", &Arg::name), Field("addressQualifier", &Arg::addressQualifier),
    Field("id", &Arg::id), Field("port", &Arg::port), Field("size", &Arg::size),
    Field("offset", &Arg::offset), Field("hostOffset", &Arg::hostOffset),
    Field("hostSize", &Arg::hostSize), Field("type", &Arg::type), Field("memSize", &Arg::memSize),
    Field("origName", &Arg::origName), Field("origUse", &Arg::origUse));

template <>
inline constexpr auto fieldsOf<CompileWorkGroupSize> = fields(Field("x", &CompileWorkGroupSize::x),
                                                              Field("y", &CompileWorkGroupSize::y),
                                                              Field("z", &CompileWorkGroupSize::z));

template <>
inline constexpr auto fieldsOf<MaxWorkGroupSize> = fields(Field("x", &MaxWorkGroupSize::x),
                                                          Field("y", &MaxWorkGroupSize::y),
                                                          Field("z", &MaxWorkGroupSize::z));

template <>
inline constexpr auto fieldsOf<FormatString> = fields(Field("id", &FormatString::id),
                                                      Field("value", &FormatString::value));

template <>
inline constexpr auto fieldsOf<StringTable> = fields(Field("format_string",
                                                           &StringTable::formatString));

template <>
inline constexpr auto fieldsOf<AddrRemap> = fields(Field("base", &AddrRemap::base),
                                                   Field("port", &AddrRemap::port));

template <>
inline constexpr auto fieldsOf<Instance> = fields(Field("name", &Instance::name),
                                                  Field("addrRemap", &Instance::addrRemap));

template <>
inline constexpr auto fieldsOf<InterfaceList> = fields(Field("Interface",
                                                             &InterfaceList::interface));

template <>
inline constexpr auto fieldsOf<FIFOInst> = fields(Field("Name", &FIFOInst::name),
                                                  Field("ParentInst", &FIFOInst::parentInst),
                                                  Field("StaticDepth", &FIFOInst::staticDepth),
                                                  Field("RuntimeDepth", &FIFOInst::runtimeDepth),
                                                  Field("InterfaceList", &FIFOInst::interfaceList));

template <>
inline constexpr auto fieldsOf<FIFOInformation> = fields(Field("FIFOInst",
                                                               &FIFOInformation::fifoInst));

template <>
inline constexpr auto fieldsOf<Kernel> = fields(
    Field("name", &Kernel::name), Field("language", &Kernel::language),
    Field("vlnv", &Kernel::vlnv), Field("attributes", &Kernel::attributes),
    Field("hash", &Kernel::hash),
    Field("preferredWorkGroupSizeMultiple", &Kernel::preferredWorkGroupSizeMultiple),
    Field("workGroupSize", &Kernel::workGroupSize), Field("debug", &Kernel::debug),
    Field("interrupt", &Kernel::interrupt), Field("hwControlProtocol", &Kernel::hwControlProtocol),
    Field("countedAutoRestart", &Kernel::countedAutoRestart),
    Field("deadlockDetection", &Kernel::deadlockDetection), Field("mailbox", &Kernel::mailbox),
    Field("swReset", &Kernel::swReset), Field("module", &Kernel::module),
    Field("port", &Kernel::port), Field("arg", &Kernel::arg),
    Field("compileWorkGroupSize", &Kernel::compileWorkGroupSize),
    Field("maxWorkGroupSize", &Kernel::maxWorkGroupSize),
    Field("string_table", &Kernel::stringTable), Field("instance", &Kernel::instance),
    Field("FIFOInformation", &Kernel::fifoInformation));

template <>
inline constexpr auto fieldsOf<Connection> = fields(Field("srcType", &Connection::srcType),
                                                    Field("srcInst", &Connection::srcInst),
                                                    Field("srcPort", &Connection::srcPort),
                                                    Field("dstType", &Connection::dstType),
                                                    Field("dstInst", &Connection::dstInst),
                                                    Field("dstPort", &Connection::dstPort));

template <>
inline constexpr auto fieldsOf<CoreMemoriesInstanceAddrRemap> =
    fields(Field("base", &CoreMemoriesInstanceAddrRemap::base),
           Field("range", &CoreMemoriesInstanceAddrRemap::range));

template <>
inline constexpr auto fieldsOf<CoreMemoriesInstance> =
    fields(Field("name", &CoreMemoriesInstance::name), Field("size", &CoreMemoriesInstance::size),
           Field("linkage", &CoreMemoriesInstance::linkage),
           Field("addrRemap", &CoreMemoriesInstance::addrRemap));

template <>
inline constexpr auto fieldsOf<CoreMemories> = fields(Field("instance", &CoreMemories::instance));

template <>
inline constexpr auto fieldsOf<PipesInstance> = fields(Field("name", &PipesInstance::name),
                                                       Field("width", &PipesInstance::width),
                                                       Field("depth", &PipesInstance::depth),
                                                       Field("linkage", &PipesInstance::linkage));

template <>
inline constexpr auto fieldsOf<Pipes> = fields(Field("instance", &Pipes::instance));

template <>
inline constexpr auto fieldsOf<Slot> = fields(Field("name", &Slot::name),
                                              Field("index", &Slot::index),
                                              Field("type", &Slot::type));

template <>
inline constexpr auto fieldsOf<ProfilersInstance> = fields(
    Field("name", &ProfilersInstance::name), Field("addrOffset", &ProfilersInstance::addrOffset),
    Field("numSlots", &ProfilersInstance::numSlots),
    Field("useCounters", &ProfilersInstance::useCounters),
    Field("useTrace", &ProfilersInstance::useTrace),
    Field("offloadType", &ProfilersInstance::offloadType), Field("slot", &ProfilersInstance::slot));

template <>
inline constexpr auto fieldsOf<Profilers> = fields(Field("instance", &Profilers::instance));

template <>
inline constexpr auto fieldsOf<Core> =
    fields(Field("name", &Core::name), Field("target", &Core::target), Field("type", &Core::type),
           Field("clockFreq", &Core::clockFreq), Field("numComputeUnits", &Core::numComputeUnits),
           Field("kernelClocks", &Core::kernelClocks), Field("kernel", &Core::kernel),
           Field("connection", &Core::connection), Field("memories", &Core::memories),
           Field("pipes", &Core::pipes), Field("profilers", &Core::profilers));

template <>
inline constexpr auto fieldsOf<Device> = fields(Field("name", &Device::name),
                                                Field("fpgaDevice", &Device::fpgaDevice),
                                                Field("addrWidth", &Device::addrWidth),
                                                Field("systemClocks", &Device::systemClocks),
                                                Field("core", &Device::core));

template <>
inline constexpr auto fieldsOf<Platform> = fields(
    Field("vendor", &Platform::vendor), Field("boardid", &Platform::boardid),
    Field("name", &Platform::name), Field("ipiboard", &Platform::ipiboard),
    Field("cfplatform", &Platform::cfplatform), Field("featureRomTime", &Platform::featureRomTime),
    Field("version", &Platform::version), Field("description", &Platform::description),
    Field("board", &Platform::board), Field("build_flow", &Platform::buildFlow),
    Field("host", &Platform::host), Field("device", &Platform::device));

template <>
inline constexpr auto fieldsOf<Project> = fields(Field("name", &Project::name),
                                                 Field("xmlns", &Project::namespaceMap),
                                                 Field("platform", &Project::platform));

}  // namespace Devpack
