#include "inspect/listing/FindText.h"

#include "inspect/listing/KernelText.h"
#include "inspect/output/Numbered.h"
#include "inspect/output/Paint.h"
#include "inspect/output/PlainText.h"
#include "inspect/records/LocationText.h"

#include <fmt/format.h>

#include <cstddef>
#include <cstdint>

namespace consolidator::inspect {

namespace {

using consolidated::Belonging;
using consolidated::Locations;

// For a location the bits that have it, one to a line; for a name all.
void writeBits(Console& console, const Locations& locations, const FindQuery& query,
               std::string_view place) {
  if (!query.location()) {
    console.out.write(fmt::format("    {}{}\n", numbered(locations.size(), "bit"), place));
    return writeLocations(console, locations, "    ");
  }
  for (std::size_t bit = 0; bit < locations.size(); ++bit) {
    if (locations[bit] != *query.location()) continue;
    console.out.write(fmt::format("    bit {}{} at {}\n", bit, place, textOf(locations[bit])));
  }
}

}  // namespace

void FindText::beginKernel(const consolidated::Kernel& kernel) {
  const std::string title = fmt::format("Kernel {}", plain(kernel.name().view()));
  console_.out.write(painted(Paint::Heading, title, console_.hasColour));
  console_.out.put('\n');
}

void FindText::addKernel(const consolidated::Kernel& kernel) {
  console_.out.write(fmt::format("  type {}, {} instances\n", nameOf(kernel.type()),
                                 kernel.instancePaths().size()));
  for (const consolidated::Text& path : kernel.instancePaths()) {
    console_.out.write(fmt::format("    {}\n", plain(path.view())));
  }
}

void FindText::addVariable(VariableKind kind, const consolidated::Variable& variable,
                           const FindQuery& query) {
  console_.out.write(fmt::format("  {} {}\n", nameOf(kind), describe(variable)));
  std::uint32_t instance = 0;
  for (const Locations& bits : variable.instanceBits()) {
    writeBits(console_, bits, query, fmt::format(" in instance {}", instance++));
  }
}

void FindText::addRegister(const consolidated::HardwareVariable& hardware,
                           const RegisterInstances::Found& found, const FindQuery& query) {
  console_.out.write(fmt::format("  register {}\n", plain(hardware.rtlName().view())));
  for (const RegisterInstance& instance : found.instances) {
    const bool isCertain = instance.belonging == Belonging::Certain;
    console_.out.write(
        fmt::format("    in instance {}{}\n", plain(instance.path),
                    isCertain ? "" : painted(Paint::Doubtful, " (doubtful)", console_.hasColour)));
  }
  if (!found.areAll) console_.out.write("    maybe in more instances\n");
  writeBits(console_, hardware.logicLocations(), query, "");
}

}  // namespace consolidator::inspect
