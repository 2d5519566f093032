// What programs compile into themselves, and to which no exported function leads. It stays as it is
// while the library keeps its name.

#include "consolidated/File.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace consolidated {
namespace {

static_assert(static_cast<std::uint32_t>(ConditionKind::Start) == 0);
static_assert(static_cast<std::uint32_t>(ConditionKind::Stop) == 1);
static_assert(static_cast<std::uint32_t>(ConditionKind::SourceLine) == 2);
static_assert(sizeof(ConditionKind) == 4);
static_assert(Sections::width == 24);
static_assert(Locations::width == 8);

// Whether a class has that size, in bytes, where addresses have 64 bits.
template <typename T>
constexpr bool hasSize(std::size_t size) {
  return sizeof(T) == size || sizeof(void*) != 8;
}

static_assert(hasSize<Text>(24));
static_assert(hasSize<Locations>(24));
static_assert(hasSize<Location>(8));
static_assert(hasSize<Section>(24));
static_assert(hasSize<Sections>(16));
static_assert(hasSize<Variable>(112));
static_assert(hasSize<HardwareVariable>(48));
static_assert(hasSize<BreakableCondition>(64));
static_assert(hasSize<List<Text>>(40));
static_assert(hasSize<Kernel>(104));
static_assert(hasSize<KernelIterator>(232));
static_assert(hasSize<Kernels>(232));
static_assert(hasSize<Fault>(32));
static_assert(hasSize<File>(24));

// Whether a member function takes nothing and gives that.
template <typename Given, typename Class>
constexpr bool gives(Given (Class::*function)() const noexcept) {
  return function != nullptr;
}

static_assert(gives<ConditionKind>(&BreakableCondition::kind));
static_assert(gives<Text>(&BreakableCondition::condition));
static_assert(gives<std::uint32_t>(&BreakableCondition::line));
static_assert(gives<Text>(&BreakableCondition::file));
static_assert(gives<std::uint64_t>(&BreakableCondition::offset));

static_assert(gives<Text>(&Variable::name));
static_assert(gives<Text>(&Variable::second));
static_assert(gives<Text>(&Variable::cType));
static_assert(gives<List<Locations>>(&Variable::instanceBits));
static_assert(gives<std::uint64_t>(&Variable::offset));

static_assert(gives<Text>(&HardwareVariable::rtlName));
static_assert(gives<std::string_view>(&HardwareVariable::registerName));
static_assert(gives<Locations>(&HardwareVariable::logicLocations));
static_assert(gives<std::uint64_t>(&HardwareVariable::offset));

static_assert(gives<std::string_view>(&Text::view));
static_assert(gives<std::string_view>(&Text::stored));
static_assert(gives<std::uint64_t>(&Text::offset));

static_assert(gives<std::optional<std::uint32_t>>(&Section::seekOffset));
static_assert(gives<std::uint32_t>(&Section::clampedSize));
static_assert(gives<std::uint64_t>(&Section::entryOffset));

static_assert(gives<std::uint32_t>(&Sections::size));
static_assert(gives<bool>(&Sections::empty));
static_assert(gives<Sections::Iterator>(&Sections::begin));
static_assert(gives<Sections::Iterator>(&Sections::end));

static_assert(gives<std::size_t>(&Locations::size));
static_assert(gives<bool>(&Locations::empty));
static_assert(gives<Locations::Iterator>(&Locations::begin));
static_assert(gives<Locations::Iterator>(&Locations::end));
static_assert(gives<std::uint64_t>(&Locations::offset));

static_assert(gives<Text>(&Kernel::name));
static_assert(gives<List<Text>>(&Kernel::instancePaths));
static_assert(gives<KernelType>(&Kernel::type));
static_assert(gives<List<Variable>>(&Kernel::arguments));
static_assert(gives<List<Variable>>(&Kernel::variables));
static_assert(gives<List<HardwareVariable>>(&Kernel::hardwareVariables));
static_assert(gives<List<BreakableCondition>>(&Kernel::breakableConditions));
static_assert(gives<List<Text>>(&Kernel::brams));
static_assert(gives<std::uint64_t>(&Kernel::offset));
static_assert(gives<std::uint64_t>(&Kernel::endOffset));
static_assert(gives<std::uint32_t>(&Kernel::section));

static_assert(gives<std::string_view>(&File::bytes));
static_assert(gives<std::optional<Text>>(&File::dwarf));
static_assert(gives<std::optional<Text>>(&File::json));
static_assert(gives<bool>(&File::complete));

}  // namespace
}  // namespace consolidated
