#include "schema/DevpackFields.h"
#include "schema/ElementClasses.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <string_view>
#include <type_traits>
#include <typeindex>

namespace Devpack {
namespace {

// Writes one line for each element class: the path to its element, then its attributes (@), texts
// (=), single children (?), lists of children (*), all in order.
class TableWriter {
 public:
  template <typename Class>
  void add(const std::string& path) {
    if (!known_.insert(typeid(Class)).second) return;
    table_ += path + ":";
    fieldsOf<Class>([&](const auto&... field) { (addField(field), ...); });
    table_ += '\n';
    fieldsOf<Class>([&](const auto&... field) { (descend(path, field), ...); });
  }

  const std::string& table() const { return table_; }

 private:
  template <typename Class, typename Member>
  void addField(const Field<Class, Member>& field) {
    table_ += ' ';
    if (std::is_same_v<Member, Attribute>) table_ += '@';
    if (std::is_same_v<Member, UnsignedAttribute>) table_ += "@u32 ";
    table_ += field.name;
    if (std::is_same_v<Member, TextElement>) table_ += '=';
    using Child = typename ChildClass<Member>::Type;
    if (std::is_same_v<Member, OptionalChild<Child>>) table_ += '?';
    if (std::is_same_v<Member, ChildList<Child>>) table_ += '*';
  }

  template <typename Class, typename Member>
  void descend(const std::string& path, const Field<Class, Member>& field) {
    using Child = typename ChildClass<Member>::Type;
    if constexpr (!std::is_void_v<Child>) add<Child>(path + '/' + std::string(field.name));
  }

  std::string table_;
  std::set<std::type_index> known_;
};

constexpr std::string_view table =
    R"(project: @name xmlns platform*
project/platform: @vendor @boardid @name @ipiboard @cfplatform @featureRomTime version* description= board* build_flow= host? device*
project/platform/version: @major @minor
project/platform/board: @name @vendor @fpga interfaces* memories* images* id* build_flow=
project/platform/board/interfaces: interface*
project/platform/board/interfaces/interface: @id @name @type
project/platform/board/memories: memory*
project/platform/board/memories/memory: @name @type @size
project/platform/board/images: @directory image*
project/platform/board/images/image: @name @type
project/platform/board/id: vendor= device= subsystem=
project/platform/host: @architecture
project/platform/device: @name @fpgaDevice @addrWidth systemClocks? core*
project/platform/device/systemClocks: clock*
project/platform/device/systemClocks/clock: @port @frequency @name
project/platform/device/core: @name @target @type @clockFreq @numComputeUnits kernelClocks? kernel* connection* memories* pipes* profilers?
project/platform/device/core/kernelClocks: clock*
project/platform/device/core/kernelClocks/clock: @port @frequency @name
project/platform/device/core/kernel: @name @language @vlnv @attributes @hash @preferredWorkGroupSizeMultiple @workGroupSize @debug @interrupt @hwControlProtocol @countedAutoRestart @deadlockDetection @mailbox @swReset module* port* arg* compileWorkGroupSize* maxWorkGroupSize? string_table? instance* FIFOInformation*
project/platform/device/core/kernel/module: @name @instName @type rtlPort? module*
project/platform/device/core/kernel/module/rtlPort: @name @object @protocol
project/platform/device/core/kernel/port: @name @mode @range @dataWidth @portType @base
project/platform/device/core/kernel/arg: @name @u32 addressQualifier @id @port @size @offset @hostOffset @hostSize @type @memSize @origName @origUse
project/platform/device/core/kernel/compileWorkGroupSize: @x @y @z
project/platform/device/core/kernel/maxWorkGroupSize: @x @y @z
project/platform/device/core/kernel/string_table: format_string*
project/platform/device/core/kernel/string_table/format_string: @id @value
project/platform/device/core/kernel/instance: @name addrRemap*
project/platform/device/core/kernel/instance/addrRemap: @base @port
project/platform/device/core/kernel/FIFOInformation: FIFOInst*
project/platform/device/core/kernel/FIFOInformation/FIFOInst: Name= ParentInst= StaticDepth= RuntimeDepth= InterfaceList*
project/platform/device/core/kernel/FIFOInformation/FIFOInst/InterfaceList: Interface=
project/platform/device/core/connection: @srcType @srcInst @srcPort @dstType @dstInst @dstPort
project/platform/device/core/memories: instance*
project/platform/device/core/memories/instance: @name @size @linkage addrRemap*
project/platform/device/core/memories/instance/addrRemap: @base @range
project/platform/device/core/pipes: instance*
project/platform/device/core/pipes/instance: @name @width @depth @linkage
project/platform/device/core/profilers: instance*
project/platform/device/core/profilers/instance: @name @addrOffset @numSlots @useCounters @useTrace @offloadType slot*
project/platform/device/core/profilers/instance/slot: @name @index @type
)";

TEST(DevpackFieldsTest, HoldTheWholeElementTree) {
  TableWriter writer;
  writer.add<Project>("project");
  EXPECT_EQ(writer.table(), table);
}

}  // namespace
}  // namespace Devpack
