#pragma once

#include "consolidated/SectionEntry.h"
#include "model/Describe.h"
#include "support/Bytes.h"

#include <cstdint>
#include <initializer_list>
#include <ostream>
#include <string>
#include <string_view>

namespace consolidator {

/// Shows an entry of a section table where a comparison fails.
inline std::ostream& operator<<(std::ostream& out, const SectionEntry& entry) {
  return out << "kind " << static_cast<std::uint32_t>(entry.kind) << " at " << entry.offset
             << " size " << entry.size;
}

/// A kind that means nothing to this program.
inline constexpr SectionKind unknownKind{7};

/// A hierarchy file with one kernel.
inline constexpr std::string_view vaddHierarchy =
    "vadd:\n type: clc\n instance path: /top/vadd_1\n";

/// The records section of that kernel.
inline std::string vaddRecords() { return u32(1) + kernelRecord("vadd", 0, {"/top/vadd_1"}); }

/// The JSON section of that kernel.
inline std::string vaddJson() {
  return std::string(
             R"({  "Kernels" : [ { "Name" : "vadd", "Instance Paths" : [ "/top/vadd_1/inst" ], )"
             R"("Type" : "OpenCL", "Arguments" : [ ], "Variables" : [ ], )"
             R"("Breakable Conditions" : [] } ] })") +
         '\0';
}

/// A records section with the kernel "k", which holds nothing but conditions of kind Start.
inline std::string recordsWithConditions(std::initializer_list<std::string_view> conditions) {
  std::string bytes = u32(1) + text("k") + u32(0) + u32(3) + u32(0) + u32(0) + u32(0) +
                      u32(static_cast<std::uint32_t>(conditions.size()));
  for (const std::string_view condition : conditions) bytes += u32(0) + text(condition);
  return bytes + u32(0);
}

/// The JSON section of that kernel with its one condition.
inline std::string jsonWithCondition(std::string_view condition) {
  return std::string(R"({  "Kernels" : [ { "Name" : "k", "Instance Paths" : [  ], )"
                     R"("Type" : "Unknown", "Arguments" : [ ], "Variables" : [ ], )"
                     R"("Breakable Conditions" : [{ "Start":true, "Cond":")")
             .append(condition)
             .append(R"("}] } ] })") +
         '\0';
}

}  // namespace consolidator
