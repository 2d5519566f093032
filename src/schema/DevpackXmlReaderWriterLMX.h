#pragma once

#include "lmx60/ByteSource.h"
#include "lmx60/ErrorCode.h"
#include "lmx60/ReadingObserver.h"
#include "schema/Element.h"

#include <memory>
#include <string>

/// The device and kernel metadata XML as typed values: one class for each element, which is the
/// list of its attributes and children in the order in which they are written.
namespace Devpack {

/// "version" of a platform.
struct Version : Element<Attribute<"major">, Attribute<"minor">> {};

/// "interface": one interface of a board.
struct Interface : Element<Attribute<"id">, Attribute<"name">, Attribute<"type">> {};

/// "interfaces" of a board.
struct Interfaces : Element<Children<"interface", Interface>> {};

/// "memory": one memory of a board.
struct Memory : Element<Attribute<"name">, Attribute<"type">, Attribute<"size">> {};

/// "memories" of a board; those of a core are CoreMemories.
struct Memories : Element<Children<"memory", Memory>> {};

/// "image": one picture of a board.
struct Image : Element<Attribute<"name">, Attribute<"type">> {};

/// "images" of a board and the directory where they are.
struct Images : Element<Attribute<"directory">, Children<"image", Image>> {};

/// "id" of a board on its bus; texts only, no attributes.
struct Id : Element<TextElement<"vendor">, TextElement<"device">, TextElement<"subsystem">> {};

/// "board" that carries the device.
struct Board : Element<Attribute<"name">, Attribute<"vendor">, Attribute<"fpga">,
                       Children<"interfaces", Interfaces>, Children<"memories", Memories>,
                       Children<"images", Images>, Children<"id", Id>, TextElement<"build_flow">> {
};

/// "host" that the platform is attached to.
struct Host : Element<Attribute<"architecture">> {};

/// "clock" in "systemClocks".
struct Clock : Element<Attribute<"port">, Attribute<"frequency">, Attribute<"name">> {};

/// "systemClocks" of a device.
struct SystemClocks : Element<Children<"clock", Clock>> {};

/// "clock" in "kernelClocks".
struct KernelClocksClock : Element<Attribute<"port">, Attribute<"frequency">, Attribute<"name">> {};

/// "kernelClocks" of a core.
struct KernelClocks : Element<Children<"clock", KernelClocksClock>> {};

/// "rtlPort": what a module is connected through.
struct RtlPort : Element<Attribute<"name">, Attribute<"object">, Attribute<"protocol">> {};

/// "module" of a kernel, or of another module.
struct ModuleType : Element<Attribute<"name">, Attribute<"instName">, Attribute<"type">,
                            Child<"rtlPort", RtlPort>, Children<"module", ModuleType>> {};

/// "port" of a kernel: one of its bus interfaces.
struct Port : Element<Attribute<"name">, Attribute<"mode">, Attribute<"range">,
                      Attribute<"dataWidth">, Attribute<"portType">, Attribute<"base">> {};

/// "arg" of a kernel: one argument and where it lies in the register space.
struct Arg : Element<Attribute<"name">, UnsignedAttribute<"addressQualifier">, Attribute<"id">,
                     Attribute<"port">, Attribute<"size">, Attribute<"offset">,
                     Attribute<"hostOffset">, Attribute<"hostSize">, Attribute<"type">,
                     Attribute<"memSize">, Attribute<"origName">, Attribute<"origUse">> {};

/// "compileWorkGroupSize" of a kernel.
struct CompileWorkGroupSize : Element<Attribute<"x">, Attribute<"y">, Attribute<"z">> {};

/// "maxWorkGroupSize" of a kernel.
struct MaxWorkGroupSize : Element<Attribute<"x">, Attribute<"y">, Attribute<"z">> {};

/// "format_string": one text that the kernel can print.
struct FormatString : Element<Attribute<"id">, Attribute<"value">> {};

/// "string_table" of a kernel.
struct StringTable : Element<Children<"format_string", FormatString>> {};

/// "addrRemap" in an "instance" of a kernel.
struct AddrRemap : Element<Attribute<"base">, Attribute<"port">> {};

/// "instance" of a kernel: one copy of it in the device.
struct Instance : Element<Attribute<"name">, Children<"addrRemap", AddrRemap>> {};

/// "InterfaceList" of a FIFO.
struct InterfaceList : Element<TextElement<"Interface">> {};

/// "FIFOInst": one FIFO inside a kernel; texts only, no attributes.
struct FIFOInst
    : Element<TextElement<"Name">, TextElement<"ParentInst">, TextElement<"StaticDepth">,
              TextElement<"RuntimeDepth">, Children<"InterfaceList", InterfaceList>> {};

/// "FIFOInformation" of a kernel.
struct FIFOInformation : Element<Children<"FIFOInst", FIFOInst>> {};

/// "kernel" of a core.
struct Kernel
    : Element<Attribute<"name">, RareAttribute<"language">, RareAttribute<"vlnv">,
              RareAttribute<"attributes">, RareAttribute<"hash">,
              RareAttribute<"preferredWorkGroupSizeMultiple">, RareAttribute<"workGroupSize">,
              RareAttribute<"debug">, RareAttribute<"interrupt">,
              RareAttribute<"hwControlProtocol">, RareAttribute<"countedAutoRestart">,
              RareAttribute<"deadlockDetection">, RareAttribute<"mailbox">,
              RareAttribute<"swReset">, Children<"module", ModuleType>, Children<"port", Port>,
              Children<"arg", Arg>, Children<"compileWorkGroupSize", CompileWorkGroupSize>,
              Child<"maxWorkGroupSize", MaxWorkGroupSize>, Child<"string_table", StringTable>,
              Children<"instance", Instance>, Children<"FIFOInformation", FIFOInformation>> {};

/// "connection" between two ports of a core.
struct Connection : Element<Attribute<"srcType">, Attribute<"srcInst">, Attribute<"srcPort">,
                            Attribute<"dstType">, Attribute<"dstInst">, Attribute<"dstPort">> {};

/// "addrRemap" in an "instance" of a core's memories.
struct CoreMemoriesInstanceAddrRemap : Element<Attribute<"base">, Attribute<"range">> {};

/// "instance" in the memories of a core.
struct CoreMemoriesInstance : Element<Attribute<"name">, Attribute<"size">, Attribute<"linkage">,
                                      Children<"addrRemap", CoreMemoriesInstanceAddrRemap>> {};

/// "memories" of a core; those of a board are Memories.
struct CoreMemories : Element<Children<"instance", CoreMemoriesInstance>> {};

/// "instance" in "pipes".
struct PipesInstance
    : Element<Attribute<"name">, Attribute<"width">, Attribute<"depth">, Attribute<"linkage">> {};

/// "pipes" of a core.
struct Pipes : Element<Children<"instance", PipesInstance>> {};

/// "slot": one thing that a profiler watches.
struct Slot : Element<Attribute<"name">, Attribute<"index">, Attribute<"type">> {};

/// "instance" in "profilers".
struct ProfilersInstance
    : Element<Attribute<"name">, Attribute<"addrOffset">, Attribute<"numSlots">,
              Attribute<"useCounters">, Attribute<"useTrace">, Attribute<"offloadType">,
              Children<"slot", Slot>> {};

/// "profilers" of a core.
struct Profilers : Element<Children<"instance", ProfilersInstance>> {};

/// "core": a region of the device that holds kernels.
struct Core : Element<Attribute<"name">, Attribute<"target">, Attribute<"type">,
                      Attribute<"clockFreq">, Attribute<"numComputeUnits">,
                      Child<"kernelClocks", KernelClocks>, Children<"kernel", Kernel>,
                      Children<"connection", Connection>, Children<"memories", CoreMemories>,
                      Children<"pipes", Pipes>, Child<"profilers", Profilers>> {};

/// "device": one programmable device of a platform.
struct Device : Element<Attribute<"name">, Attribute<"fpgaDevice">, Attribute<"addrWidth">,
                        Child<"systemClocks", SystemClocks>, Children<"core", Core>> {};

/// "platform": a board, its host and its devices.
struct Platform
    : Element<Attribute<"vendor">, Attribute<"boardid">, Attribute<"name">, Attribute<"ipiboard">,
              Attribute<"cfplatform">, Attribute<"featureRomTime">, Children<"version", Version>,
              TextElement<"description">, Children<"board", Board>, TextElement<"build_flow">,
              Child<"host", Host>, Children<"device", Device>> {};

/// "project", the root of the document.
struct Project : Element<Attribute<"name">, Namespaces<"xmlns">, Children<"platform", Platform>> {
  // They work on the whole tree: defined in the source, so that users need not compile them.
  Project();
  Project(const Project& other);
  Project(Project&& other) noexcept;
  Project& operator=(const Project& other);
  Project& operator=(Project&& other) noexcept;
  ~Project();

  /// Reads the document in a file. `errorCode` is `not_read` until that has come to its end, and
  /// `ok` after it. A file that cannot be opened makes it `file_not_opened` and gives an empty
  /// project; every fault of the document is thrown as a `lmx::c_lmx_exception` and sets its code.
  Project(const char* fileName, lmx::error_code& errorCode);

  /// The same from any source. An observer, if there is one, is told what is left out.
  Project(std::unique_ptr<lmx::c_byte_source> source, lmx::error_code& errorCode,
          lmx::c_reading_observer* observer = nullptr);

  /// Writes the document to a file, which is created or overwritten. Returns `not_written` when it
  /// could not be written in full. The tool itself writes no document, but other code relies on
  /// this and the next function.
  lmx::error_code writeToFile(const char* fileName) const;

  /// The document as a text in UTF-8.
  std::string writeToString() const;
};

}  // namespace Devpack
