#pragma once

#include "support/Bytes.h"
#include "support/TemporaryFolder.h"

#include <filesystem>

namespace consolidator::inspect {

/// Writes what random command lines of the tool choose from: an input of each kind, some that are
/// refused, consolidated files of all conditions, a folder and links.
inline void writeRunInputs(const TemporaryFolder& folder) {
  folder.write("h", "k:\n type: hls\n instance path: /t/k_1\n");
  folder.write("refused.h", "version: 2\n");
  folder.write("x.dbg", "RTL a b c\nlocal i\nat k.c:1\nend i_r\n");
  folder.write("xml", "<project/>");
  folder.write("refused.xml", "<project>");
  folder.write("refused.aux", "<ak:arg ak:originalName=\n");
  folder.write("ll", "Bit 1 0x2 3 d 4 Net=t/k_1/i_r\n");
  folder.write("made", container({{SectionKind::ProjectName, "name"},
                                  {SectionKind::Dwarf, "dwarf"},
                                  {SectionKind::Json, emptyJson()}}));
  folder.write("newer", header(0, 2, 3));
  folder.write("foreign", "abcdefghijklmnopqrstuvwxyz");
  folder.write("empty", "");
  std::filesystem::create_directory(folder.path("folder"));
  std::filesystem::create_symlink("nowhere", folder.path("dangling"));
  std::filesystem::create_symlink("made", folder.path("link"));
}

}  // namespace consolidator::inspect
