#pragma once

#include "Bytes.h"

#include <cstddef>
#include <string>

namespace consolidator {

/// The records of two kernels that use every field.
inline std::string fullRecords() {
  const std::string variable = text("a") + text("a_r") + text("int*") + u32(2) + u32(2) + u32(1) +
                               u32(2) + u32(3) + u32(4) + u32(0);
  const std::string bare = text("x") + text("") + text("char") + u32(0);
  const std::string hardware = text("reg") + u32(2) + u32(5) + u32(6) + u32(7) + u32(8);
  const std::string conditions = u32(3) + u32(0) + text("(x == 1)") + u32(1) +
                                 text("(1'b1 == 1'b1)") + u32(2) + text("y & z") + u32(42) +
                                 text("k.c");
  return u32(2) + kernelRecord("first", 4, {"/top/first_1", "/top/first_2"}) + text("second") +
         u32(1) + text("/top/second") + u32(0) + u32(2) + variable + bare + u32(1) + variable +
         u32(1) + hardware + conditions + u32(2) + text("bram") + text("bram");
}

/// A file with every kind of section, to be damaged.
inline std::string fullContainer() {
  return container({{SectionKind::ProjectName, "proj"},
                    {SectionKind::Dwarf, "\177ELF with more"},
                    {SectionKind::Json, "as it was rendered"},
                    {SectionKind::KernelRecords, fullRecords()},
                    {SectionKind::ProjectName, "name"}});
}

/// Where header and table of that file end, in which its five sections are described.
inline constexpr std::size_t fullContainerTableEnd = 16 + 5 * 24;

}  // namespace consolidator
