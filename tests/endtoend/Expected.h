#pragma once

#include "support/Bytes.h"

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace consolidator {

/// A section of any kind, also of one that no file should hold.
inline Section section(std::uint32_t kind, std::string bytes) {
  return {static_cast<SectionKind>(kind), std::move(bytes)};
}

inline Section projectSection(std::string name) { return section(0, std::move(name)); }

inline Section dwarfSection(std::string bytes) { return section(1, std::move(bytes)); }

/// The binary records of kernels, given in their binary form.
inline Section recordsSection(const std::vector<std::string>& records) {
  std::string bytes = u32(static_cast<std::uint32_t>(records.size()));
  for (const std::string& record : records) bytes += record;
  return section(2, bytes);
}

/// The JSON document around the objects of all kernels.
inline std::string jsonText(std::string_view kernels) {
  return std::string("{  \"Kernels\" : [ ").append(kernels).append(" ] }");
}

inline Section jsonSection(std::string_view kernels) {
  return section(3, jsonText(kernels) + '\0');
}

/// A consolidated file of any version.
inline std::string container(const std::vector<Section>& sections, std::int32_t majorVersion,
                             std::int32_t minorVersion) {
  return container(sections).replace(4, 8, header(0, majorVersion, minorVersion), 4, 8);
}

/// The consolidated file of a run that had nothing to put into it.
inline std::string emptyFile() { return container({jsonSection("")}); }

/// The JSON object of a kernel that has instance paths only.
inline std::string kernelJson(std::string_view name, std::string_view type,
                              std::initializer_list<std::string_view> paths = {}) {
  std::string text = std::string("{ \"Name\" : \"").append(name) + "\", \"Instance Paths\" : [ ";
  std::string_view separator;
  for (const std::string_view path : paths) {
    text.append(separator).append("\"").append(path).append("/inst\"");
    separator = ", ";
  }
  return text.append(" ], \"Type\" : \"").append(type) +
         "\", \"Arguments\" : [ ], \"Variables\" : [ ], \"Breakable Conditions\" : [] }";
}

}  // namespace consolidator
