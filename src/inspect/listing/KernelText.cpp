#include "inspect/listing/KernelText.h"

#include "inspect/output/Numbered.h"
#include "inspect/output/Paint.h"
#include "inspect/output/PlainText.h"
#include "inspect/records/KernelItems.h"
#include "inspect/records/LocationText.h"

#include <fmt/format.h>

#include <cstddef>
#include <cstdint>

namespace consolidator::inspect {

namespace {

using consolidated::BreakableCondition;
using consolidated::ConditionKind;
using consolidated::HardwareVariable;
using consolidated::Kernel;
using consolidated::List;
using consolidated::Locations;
using consolidated::Text;
using consolidated::Variable;

void writeHeading(Console& console, std::string_view title, std::size_t count) {
  console.out.write(fmt::format(
      "\n  {}\n", painted(Paint::Heading, fmt::format("{}: {}", title, count), console.hasColour)));
}

void writeTexts(Console& console, std::string_view title, const List<Text>& texts) {
  writeHeading(console, title, texts.size());
  std::uint32_t number = 0;
  for (const Text& text : texts) {
    console.out.write(fmt::format("    {}: {}\n", number++, plain(text.view())));
  }
}

// Bits name their instance by its number: its path may be long, and stands in the file only once.
void writeInstanceBits(Console& console, const Variable& variable) {
  std::uint32_t instance = 0;
  for (const Locations& bits : variable.instanceBits()) {
    console.out.write(
        fmt::format("      {} in instance {}\n", numbered(bits.size(), "bit"), instance++));
    writeLocations(console, bits, "      ");
  }
}

void writeVariables(Console& console, std::string_view title, const List<Variable>& variables) {
  writeHeading(console, title, variables.size());
  for (const Variable& variable : variables) {
    console.out.write(fmt::format("    {}\n", describe(variable)));
    writeInstanceBits(console, variable);
  }
}

void writeHardwareVariables(Console& console, const List<HardwareVariable>& variables) {
  writeHeading(console, "Hardware variables", variables.size());
  for (const HardwareVariable& variable : variables) {
    console.out.write(fmt::format("    {}: {}\n", plain(variable.rtlName().view()),
                                  numbered(variable.logicLocations().size(), "bit")));
    writeLocations(console, variable.logicLocations(), "    ");
  }
}

void writeConditions(Console& console, const List<BreakableCondition>& conditions) {
  writeHeading(console, "Breakable conditions", conditions.size());
  for (const BreakableCondition& condition : conditions) {
    std::string place;
    if (condition.kind() == ConditionKind::SourceLine) {
      place = fmt::format(" {}:{}", plain(condition.file().view()), condition.line());
    }
    console.out.write(fmt::format("    {}{}: {}\n", nameOf(condition.kind()), place,
                                  plain(condition.condition().view())));
  }
}

}  // namespace

std::string describe(const Variable& variable) {
  return fmt::format("{}: {}, {}, register {}", plain(variable.name().view()),
                     plain(variable.cType().view()), numbered(variable.bitWidth(), "bit"),
                     plain(variable.second().view()));
}

void writeLocations(Console& console, const Locations& locations, std::string_view indent) {
  constexpr std::size_t perLine = 8;
  for (std::size_t bit = 0; bit < locations.size(); ++bit) {
    if (bit % perLine == 0) console.out.write(fmt::format("{}  {:>6}:", indent, bit));
    console.out.write(fmt::format(" {}", textOf(locations[bit])));
    if ((bit + 1) % perLine == 0 || bit + 1 == locations.size()) console.out.put('\n');
  }
}

void writeKernelInFull(Console& console, const Kernel& kernel) {
  const std::string title = fmt::format("Kernel {}", plain(kernel.name().view()));
  console.out.write(fmt::format(
      "{}\n  type: {} ({})\n  record: {:#x} to {:#x}, in section {}\n  instance suffix: {}\n",
      painted(Paint::Heading, title, console.hasColour), nameOf(kernel.type()),
      static_cast<std::uint32_t>(kernel.type()), kernel.offset(), kernel.endOffset(),
      kernel.section(), kernel.instanceSuffix()));
  writeTexts(console, "Instance paths", kernel.instancePaths());
  writeVariables(console, "Arguments", kernel.arguments());
  writeVariables(console, "Variables", kernel.variables());
  writeHardwareVariables(console, kernel.hardwareVariables());
  writeConditions(console, kernel.breakableConditions());
  writeTexts(console, "Block RAMs", kernel.brams());
}

}  // namespace consolidator::inspect
