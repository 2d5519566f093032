#include "inspect/records/SectionItems.h"

#include <cstdint>

namespace consolidator::inspect {

using consolidated::SectionKind;

std::string_view nameOf(SectionKind kind) {
  switch (kind) {
    case SectionKind::ProjectName:
      return "project_name";
    case SectionKind::Dwarf:
      return "dwarf";
    case SectionKind::KernelRecords:
      return "kernel_records";
    case SectionKind::Json:
      return "json";
    default:
      return "unknown";
  }
}

void writeItem(JsonDocument& document, const consolidated::Section& section) {
  document.beginObject();
  document.member("kind", nameOf(section.kind));
  document.member("kind_number", static_cast<std::uint32_t>(section.kind));
  document.member("offset", section.offset);
  document.member("size", section.size);
  document.endObject();
}

}  // namespace consolidator::inspect
