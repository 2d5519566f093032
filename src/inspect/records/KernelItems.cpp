#include "inspect/records/KernelItems.h"

#include "consolidated/List.h"
#include "consolidated/Text.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace consolidator::inspect {

using consolidated::BreakableCondition;
using consolidated::ConditionKind;

namespace {

void writeItem(JsonDocument& document, const consolidated::Text& text) {
  document.value(text.view());
}

template <typename List>
void writeList(JsonDocument& document, std::string_view key, const List& items) {
  document.key(key).beginArray();
  for (const auto& item : items) writeItem(document, item);
  document.endArray();
}

}  // namespace

std::string_view nameOf(ConditionKind kind) {
  switch (kind) {
    case ConditionKind::Start:
      return "start";
    case ConditionKind::Stop:
      return "stop";
    case ConditionKind::SourceLine:
      return "source_line";
    default:
      return "error";
  }
}

void writeItem(JsonDocument& document, const consolidated::Locations& locations) {
  document.value(locations);
}

void writeItem(JsonDocument& document, const consolidated::Variable& variable) {
  document.beginObject();
  writeMembers(document, variable);
  document.endObject();
}

void writeMembers(JsonDocument& document, const consolidated::Variable& variable) {
  document.member("name", variable.name().view());
  document.member("second", variable.second().view());
  document.member("c_type", variable.cType().view());
  document.member("bit_width", variable.bitWidth());
  writeList(document, "instance_bits", variable.instanceBits());
}

void writeItem(JsonDocument& document, const consolidated::HardwareVariable& variable) {
  document.beginObject();
  writeMembers(document, variable);
  document.endObject();
}

void writeMembers(JsonDocument& document, const consolidated::HardwareVariable& variable) {
  document.member("rtl_name", variable.rtlName().view());
  document.key("logic_locations");
  writeItem(document, variable.logicLocations());
}

void writeItem(JsonDocument& document, const BreakableCondition& condition) {
  document.beginObject();
  document.member("kind", nameOf(condition.kind()));
  document.member("kind_number", static_cast<std::uint32_t>(condition.kind()));
  document.member("condition", condition.condition().view());
  if (condition.kind() == ConditionKind::SourceLine) {
    document.member("file", condition.file().view());
    document.member("line", condition.line());
  }
  document.endObject();
}

void writeItem(JsonDocument& document, const consolidated::Kernel& kernel) {
  document.beginObject();
  document.member("name", kernel.name().view());
  document.member("type", nameOf(kernel.type()));
  document.member("type_number", static_cast<std::uint32_t>(kernel.type()));
  writeList(document, "instance_paths", kernel.instancePaths());
  document.member("instance_suffix", kernel.instanceSuffix());
  writeList(document, "arguments", kernel.arguments());
  writeList(document, "variables", kernel.variables());
  writeList(document, "hardware_variables", kernel.hardwareVariables());
  writeList(document, "breakable_conditions", kernel.breakableConditions());
  writeList(document, "brams", kernel.brams());
  document.endObject();
}

}  // namespace consolidator::inspect
