#include "inspect/listing/FindDocument.h"

#include "inspect/records/KernelItems.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace consolidator::inspect {

namespace {

using consolidated::Belonging;
using consolidated::Locations;

void begin(JsonDocument& document, std::string_view what, std::uint64_t offset) {
  document.beginObject().member("what", what).member("offset", offset);
}

void writeInstances(JsonDocument& document, const RegisterInstances::Found& found) {
  document.key("instances").beginArray();
  for (const RegisterInstance& instance : found.instances) {
    const bool isCertain = instance.belonging == Belonging::Certain;
    document.beginObject().member("path", instance.path);
    document.member("belonging", isCertain ? "certain" : "doubtful").endObject();
  }
  document.endArray().member("all_instances", found.areAll);
}

// The numbers of the bits that have the location that is looked for.
void writeBits(JsonDocument& document, const Locations& locations, const FindQuery& query) {
  document.beginArray();
  for (std::size_t bit = 0; bit < locations.size(); ++bit) {
    if (locations[bit] == *query.location()) document.value(static_cast<std::uint32_t>(bit));
  }
  document.endArray();
}

}  // namespace

void FindDocument::beginKernel(const consolidated::Kernel& kernel) {
  document_.beginObject().member("kernel", kernel.name().view());
  document_.key("matches").beginArray();
}

void FindDocument::endKernel() { document_.endArray().endObject(); }

void FindDocument::addKernel(const consolidated::Kernel& kernel) {
  begin(document_, "kernel", kernel.offset());
  document_.member("name", kernel.name().view()).member("type", nameOf(kernel.type()));
  document_.key("instance_paths").beginArray();
  for (const consolidated::Text& path : kernel.instancePaths()) document_.value(path.view());
  document_.endArray().endObject();
}

void FindDocument::addVariable(VariableKind kind, const consolidated::Variable& variable,
                               const FindQuery& query) {
  begin(document_, nameOf(kind), variable.offset());
  writeMembers(document_, variable);
  if (query.location()) {
    document_.key("bits").beginArray();
    for (const Locations& bits : variable.instanceBits()) writeBits(document_, bits, query);
    document_.endArray();
  }
  document_.endObject();
}

void FindDocument::addRegister(const consolidated::HardwareVariable& hardware,
                               const RegisterInstances::Found& found, const FindQuery& query) {
  begin(document_, "hardware_variable", hardware.offset());
  writeMembers(document_, hardware);
  document_.member("register", hardware.registerName());
  writeInstances(document_, found);
  if (query.location()) writeBits(document_.key("bits"), hardware.logicLocations(), query);
  document_.endObject();
}

}  // namespace consolidator::inspect
