#pragma once

#include "lmx60/ErrorCode.h"
#include "lmx60/NamespaceMap.h"
#include "schema/ChildList.h"
#include "schema/Element.h"
#include "schema/OptionalChild.h"
#include "schema/OptionalValue.h"

#include <string>

/// The device and kernel metadata XML as typed values: one class for each element. Members are
/// named for the attributes and child elements that they hold, and stand in the order in which
/// these are written; how often a child occurs follows from its type.
namespace Devpack {

/// "version" of a platform.
struct Version : Element<Version> {
  Attribute major;
  Attribute minor;

  bool operator==(const Version&) const = default;
};

/// "interface": one interface of a board.
struct Interface : Element<Interface> {
  Attribute id;
  Attribute name;
  Attribute type;

  bool operator==(const Interface&) const = default;
};

/// "interfaces" of a board.
struct Interfaces : Element<Interfaces> {
  ChildList<Interface> interface;

  bool operator==(const Interfaces&) const = default;
};

/// "memory": one memory of a board.
struct Memory : Element<Memory> {
  Attribute name;
  Attribute type;
  Attribute size;

  bool operator==(const Memory&) const = default;
};

/// "memories" of a board; those of a core are CoreMemories.
struct Memories : Element<Memories> {
  ChildList<Memory> memory;

  bool operator==(const Memories&) const = default;
};

/// "image": one picture of a board.
struct Image : Element<Image> {
  Attribute name;
  Attribute type;

  bool operator==(const Image&) const = default;
};

/// "images" of a board and the directory where they are.
struct Images : Element<Images> {
  Attribute directory;
  ChildList<Image> image;

  bool operator==(const Images&) const = default;
};

/// "id" of a board on its bus; texts only, no attributes.
struct Id : Element<Id> {
  TextElement vendor;
  TextElement device;
  TextElement subsystem;

  bool operator==(const Id&) const = default;
};

/// "board" that carries the device.
struct Board : Element<Board> {
  Attribute name;
  Attribute vendor;
  Attribute fpga;
  ChildList<Interfaces> interfaces;
  ChildList<Memories> memories;
  ChildList<Images> images;
  ChildList<Id> id;
  TextElement buildFlow;

  bool operator==(const Board&) const = default;
};

/// "host" that the platform is attached to.
struct Host : Element<Host> {
  Attribute architecture;

  bool operator==(const Host&) const = default;
};

/// "clock" in "systemClocks".
struct Clock : Element<Clock> {
  Attribute port;
  Attribute frequency;
  Attribute name;

  bool operator==(const Clock&) const = default;
};

/// "systemClocks" of a device.
struct SystemClocks : Element<SystemClocks> {
  ChildList<Clock> clock;

  bool operator==(const SystemClocks&) const = default;
};

/// "clock" in "kernelClocks".
struct KernelClocksClock : Element<KernelClocksClock> {
  Attribute port;
  Attribute frequency;
  Attribute name;

  bool operator==(const KernelClocksClock&) const = default;
};

/// "kernelClocks" of a core.
struct KernelClocks : Element<KernelClocks> {
  ChildList<KernelClocksClock> clock;

  bool operator==(const KernelClocks&) const = default;
};

/// "rtlPort": what a module is connected through.
struct RtlPort : Element<RtlPort> {
  Attribute name;
  Attribute object;
  Attribute protocol;

  bool operator==(const RtlPort&) const = default;
};

/// "module" of a kernel, or of another module.
struct ModuleType : Element<ModuleType> {
  Attribute name;
  Attribute instName;
  Attribute type;
  OptionalChild<RtlPort> rtlPort;
  ChildList<ModuleType> module;

  bool operator==(const ModuleType&) const = default;
};

/// "port" of a kernel: one of its bus interfaces.
struct Port : Element<Port> {
  Attribute name;
  Attribute mode;
  Attribute range;
  Attribute dataWidth;
  Attribute portType;
  Attribute base;

  bool operator==(const Port&) const = default;
};

/// "arg" of a kernel: one argument and where it lies in the register space.
struct Arg : Element<Arg> {
  Attribute name;
  UnsignedAttribute addressQualifier;
  Attribute id;
  Attribute port;
  Attribute size;
  Attribute offset;
  Attribute hostOffset;
  Attribute hostSize;
  Attribute type;
  Attribute memSize;
  Attribute origName;
  Attribute origUse;

  bool operator==(const Arg&) const = default;
};

/// "compileWorkGroupSize" of a kernel.
struct CompileWorkGroupSize : Element<CompileWorkGroupSize> {
  Attribute x;
  Attribute y;
  Attribute z;

  bool operator==(const CompileWorkGroupSize&) const = default;
};

/// "maxWorkGroupSize" of a kernel.
struct MaxWorkGroupSize : Element<MaxWorkGroupSize> {
  Attribute x;
  Attribute y;
  Attribute z;

  bool operator==(const MaxWorkGroupSize&) const = default;
};

/// "format_string": one text that the kernel can print.
struct FormatString : Element<FormatString> {
  Attribute id;
  Attribute value;

  bool operator==(const FormatString&) const = default;
};

/// "string_table" of a kernel.
struct StringTable : Element<StringTable> {
  ChildList<FormatString> formatString;

  bool operator==(const StringTable&) const = default;
};

/// "addrRemap" in an "instance" of a kernel.
struct AddrRemap : Element<AddrRemap> {
  Attribute base;
  Attribute port;

  bool operator==(const AddrRemap&) const = default;
};

/// "instance" of a kernel: one copy of it in the device.
struct Instance : Element<Instance> {
  Attribute name;
  ChildList<AddrRemap> addrRemap;

  bool operator==(const Instance&) const = default;
};

/// "InterfaceList" of a FIFO.
struct InterfaceList : Element<InterfaceList> {
  TextElement interface;

  bool operator==(const InterfaceList&) const = default;
};

/// "FIFOInst": one FIFO inside a kernel; texts only, no attributes.
struct FIFOInst : Element<FIFOInst> {
  TextElement name;
  TextElement parentInst;
  TextElement staticDepth;
  TextElement runtimeDepth;
  ChildList<InterfaceList> interfaceList;

  bool operator==(const FIFOInst&) const = default;
};

/// "FIFOInformation" of a kernel.
struct FIFOInformation : Element<FIFOInformation> {
  ChildList<FIFOInst> fifoInst;

  bool operator==(const FIFOInformation&) const = default;
};

/// "kernel" of a core.
struct Kernel : Element<Kernel> {
  Attribute name;
  Attribute language;
  Attribute vlnv;
  Attribute attributes;
  Attribute hash;
  Attribute preferredWorkGroupSizeMultiple;
  Attribute workGroupSize;
  Attribute debug;
  Attribute interrupt;
  Attribute hwControlProtocol;
  Attribute countedAutoRestart;
  Attribute deadlockDetection;
  Attribute mailbox;
  Attribute swReset;
  ChildList<ModuleType> module;
  ChildList<Port> port;
  ChildList<Arg> arg;
  ChildList<CompileWorkGroupSize> compileWorkGroupSize;
  OptionalChild<MaxWorkGroupSize> maxWorkGroupSize;
  OptionalChild<StringTable> stringTable;
  ChildList<Instance> instance;
  ChildList<FIFOInformation> fifoInformation;

  bool operator==(const Kernel&) const = default;
};

/// "connection" between two ports of a core.
struct Connection : Element<Connection> {
  Attribute srcType;
  Attribute srcInst;
  Attribute srcPort;
  Attribute dstType;
  Attribute dstInst;
  Attribute dstPort;

  bool operator==(const Connection&) const = default;
};

/// "addrRemap" in an "instance" of a core's memories.
struct CoreMemoriesInstanceAddrRemap : Element<CoreMemoriesInstanceAddrRemap> {
  Attribute base;
  Attribute range;

  bool operator==(const CoreMemoriesInstanceAddrRemap&) const = default;
};

/// "instance" in the memories of a core.
struct CoreMemoriesInstance : Element<CoreMemoriesInstance> {
  Attribute name;
  Attribute size;
  Attribute linkage;
  ChildList<CoreMemoriesInstanceAddrRemap> addrRemap;

  bool operator==(const CoreMemoriesInstance&) const = default;
};

/// "memories" of a core; those of a board are Memories.
struct CoreMemories : Element<CoreMemories> {
  ChildList<CoreMemoriesInstance> instance;

  bool operator==(const CoreMemories&) const = default;
};

/// "instance" in "pipes".
struct PipesInstance : Element<PipesInstance> {
  Attribute name;
  Attribute width;
  Attribute depth;
  Attribute linkage;

  bool operator==(const PipesInstance&) const = default;
};

/// "pipes" of a core.
struct Pipes : Element<Pipes> {
  ChildList<PipesInstance> instance;

  bool operator==(const Pipes&) const = default;
};

/// "slot": one thing that a profiler watches.
struct Slot : Element<Slot> {
  Attribute name;
  Attribute index;
  Attribute type;

  bool operator==(const Slot&) const = default;
};

/// "instance" in "profilers".
struct ProfilersInstance : Element<ProfilersInstance> {
  Attribute name;
  Attribute addrOffset;
  Attribute numSlots;
  Attribute useCounters;
  Attribute useTrace;
  Attribute offloadType;
  ChildList<Slot> slot;

  bool operator==(const ProfilersInstance&) const = default;
};

/// "profilers" of a core.
struct Profilers : Element<Profilers> {
  ChildList<ProfilersInstance> instance;

  bool operator==(const Profilers&) const = default;
};

/// "core": a region of the device that holds kernels.
struct Core : Element<Core> {
  Attribute name;
  Attribute target;
  Attribute type;
  Attribute clockFreq;
  Attribute numComputeUnits;
  OptionalChild<KernelClocks> kernelClocks;
  ChildList<Kernel> kernel;
  ChildList<Connection> connection;
  ChildList<CoreMemories> memories;
  ChildList<Pipes> pipes;
  OptionalChild<Profilers> profilers;

  bool operator==(const Core&) const = default;
};

/// "device": one programmable device of a platform.
struct Device : Element<Device> {
  Attribute name;
  Attribute fpgaDevice;
  Attribute addrWidth;
  OptionalChild<SystemClocks> systemClocks;
  ChildList<Core> core;

  bool operator==(const Device&) const = default;
};

/// "platform": a board, its host and its devices.
struct Platform : Element<Platform> {
  Attribute vendor;
  Attribute boardid;
  Attribute name;
  Attribute ipiboard;
  Attribute cfplatform;
  Attribute featureRomTime;
  ChildList<Version> version;
  TextElement description;
  ChildList<Board> board;
  TextElement buildFlow;
  OptionalChild<Host> host;
  ChildList<Device> device;

  bool operator==(const Platform&) const = default;
};

/// "project", the root of the document.
struct Project : Element<Project> {
  Project() = default;

  /// Reads the document in a file. `errorCode` is `not_read` until that has come to its end, and
  /// `ok` after it. A file that cannot be opened makes it `file_not_opened` and an empty project;
  /// every fault of the document is thrown as a `lmx::c_lmx_exception`, whose code it gets.
  Project(const char* fileName, lmx::error_code& errorCode);

  /// Writes the document to a file, which is created or overwritten. Returns `not_written` when it
  /// could not be written in full. The tool itself writes no document, here or below; other code is
  /// bound to that.
  lmx::error_code writeToFile(const char* fileName) const;

  /// The document as a text in UTF-8.
  std::string writeToString() const;

  Attribute name;
  lmx::c_namespace_map namespaceMap;  ///< declared on the root; kept so that it is written again
  ChildList<Platform> platform;

  bool operator==(const Project&) const = default;
};

}  // namespace Devpack
