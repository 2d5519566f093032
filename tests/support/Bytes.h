#pragma once

#include "consolidated/SectionEntry.h"

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator {

/// The lowest `width` bytes of a number, the lowest first.
inline std::string littleEndian(std::uint64_t value, std::size_t width) {
  std::string bytes;
  for (std::size_t i = 0; i < width; ++i) bytes += static_cast<char>((value >> (8 * i)) & 0xFFU);
  return bytes;
}

inline std::string u32(std::uint32_t value) { return littleEndian(value, 4); }

inline std::string u64(std::uint64_t value) { return littleEndian(value, 8); }

/// A text of a kernel record: its length, then its bytes.
inline std::string text(std::string_view bytes) {
  return u32(static_cast<std::uint32_t>(bytes.size())).append(bytes);
}

/// An entry of the section table; `padding` stands in both padding fields.
inline std::string entry(std::uint32_t kind, std::uint64_t offset, std::uint32_t size,
                         std::uint32_t padding = 0) {
  return u32(kind) + u32(padding) + u64(offset) + u32(size) + u32(padding);
}

inline std::string entry(SectionKind kind, std::uint64_t offset, std::uint32_t size,
                         std::uint32_t padding = 0) {
  return entry(static_cast<std::uint32_t>(kind), offset, size, padding);
}

/// The header of a consolidated file.
inline std::string header(std::uint32_t sections, std::int32_t majorVersion = 1,
                          std::int32_t minorVersion = 1, std::uint32_t magic = 0xBEEFDAD4U) {
  return u32(magic) + u32(static_cast<std::uint32_t>(majorVersion)) +
         u32(static_cast<std::uint32_t>(minorVersion)) + u32(sections);
}

/// A section of a consolidated file: what its entry says it is and its bytes.
struct Section {
  SectionKind kind;
  std::string bytes;
};

/// A consolidated file as the tool writes it: header, table and the sections without gaps.
inline std::string container(const std::vector<Section>& sections) {
  std::size_t position = 16 + 24 * sections.size();
  std::string table;
  std::string payload;
  for (const Section& section : sections) {
    table += entry(section.kind, position, static_cast<std::uint32_t>(section.bytes.size()));
    payload += section.bytes;
    position += section.bytes.size();
  }
  return header(static_cast<std::uint32_t>(sections.size())) + table + payload;
}

/// The number at a position that has at least `width` bytes from there on.
inline std::uint64_t numberAt(std::string_view bytes, std::size_t position, std::size_t width) {
  std::uint64_t value = 0;
  for (std::size_t i = width; i-- > 0;) {
    value = value << 8U | static_cast<unsigned char>(bytes[position + i]);
  }
  return value;
}

/// The binary form of a kernel with instance paths only.
inline std::string kernelRecord(std::string_view name, std::uint32_t type,
                                std::initializer_list<std::string_view> paths = {}) {
  std::string bytes = text(name) + u32(static_cast<std::uint32_t>(paths.size()));
  for (const std::string_view path : paths) bytes += text(path);
  return bytes + u32(type) + u32(0) + u32(0) + u32(0) + u32(0) + u32(0);
}

/// The JSON section of a file without kernels, its zero byte included.
inline std::string emptyJson() { return std::string("{  \"Kernels\" : [  ] }") + '\0'; }

}  // namespace consolidator
