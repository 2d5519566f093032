#include "schema/ElementClasses.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <string_view>
#include <type_traits>
#include <typeindex>

namespace Devpack {
namespace {

// What stands for a field in the table.
template <FieldName name>
std::string row(const Attribute<name>* /*field*/) {
  return " @" + std::string(name.view());
}

template <FieldName name>
std::string row(const RareAttribute<name>* /*field*/) {
  return " @" + std::string(name.view());
}

template <FieldName name>
std::string row(const UnsignedAttribute<name>* /*field*/) {
  return " @u32 " + std::string(name.view());
}

template <FieldName name>
std::string row(const Namespaces<name>* /*field*/) {
  return " " + std::string(name.view());
}

template <FieldName name>
std::string row(const TextElement<name>* /*field*/) {
  return " " + std::string(name.view()) + "=";
}

template <FieldName name, typename Class>
std::string row(const Child<name, Class>* /*field*/) {
  return " " + std::string(name.view()) + "?";
}

template <FieldName name, typename Class>
std::string row(const Children<name, Class>* /*field*/) {
  return " " + std::string(name.view()) + "*";
}

// Writes one line for each element class: the path to its element, then its attributes (@), texts
// (=), single children (?), lists of children (*), all in order.
class TableWriter {
 public:
  template <typename Class>
  void add(const std::string& path) {
    if constexpr (!std::is_void_v<Class>) {
      if (!known_.insert(typeid(Class)).second) return;
      addFields(path, decltype(fieldsOf(Class()))());
    }
  }

  const std::string& table() const { return table_; }

 private:
  template <typename... Fields>
  void addFields(const std::string& path, TypeList<Fields...> /*fields*/) {
    table_ += path + ":" + (row(static_cast<Fields*>(nullptr)) + ...) + '\n';
    (add<typename ChildClass<Fields>::Type>(path + '/' + std::string(Fields::name)), ...);
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

TEST(ElementTreeTest, HoldsEveryElementWithItsFields) {
  TableWriter writer;
  writer.add<Project>("project");
  EXPECT_EQ(writer.table(), table);
}

}  // namespace
}  // namespace Devpack
