#pragma once

#include "LibraryRecord.h"
#include "MemoryFile.h"
#include "consolidated/ConsolidatedFile.h"
#include "consolidated/File.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator {

/// Reads the same bytes with the tool's own model and with the reading library.
class BothReadings {
 public:
  /// Names the first thing in which the two differ; empty if there is none.
  std::string difference(std::string_view bytes) {
    stored_.write(bytes);
    const bool isWhole = tool_.readExisting(stored_.path());
    const auto library = consolidated::File::fromBytes(bytes);
    std::string found = library ? differenceOfFiles(*library, isWhole) : differenceOfNone(isWhole);
    if (found.empty()) found = differenceOfDumps(library);
    tool_.close();
    return found;
  }

 private:
  std::string differenceOfNone(bool isWhole) const {
    if (isWhole) return "whether the file is read";
    return tool_.table().empty() && tool_.kernels().empty() ? "" : "what a file that is none holds";
  }

  std::string differenceOfFiles(const consolidated::File& file, bool isWhole) const {
    if (file.majorVersion() != tool_.header().majorVersion ||
        file.minorVersion() != tool_.header().minorVersion ||
        file.claimedSections() != tool_.header().sectionCount) {
      return "the header";
    }
    if (!hasSameTable(file.sections())) return "the table";
    if (project(file) != tool_.projectName()) return "the project";
    if (file.complete() != isWhole) return "whether the file is complete";
    return differenceOfKernels(file);
  }

  // The tool clamps the sizes of the sections that it visits.
  bool hasSameTable(const consolidated::Sections& sections) const {
    if (sections.size() != tool_.table().size()) return false;
    for (const consolidated::Section& section : sections) {
      const SectionEntry& entry = tool_.table()[section.index];
      if (section.kind != static_cast<consolidated::SectionKind>(entry.kind) ||
          section.offset != entry.offset ||
          (section.size != entry.size && section.clampedSize() != entry.size)) {
        return false;
      }
    }
    return true;
  }

  static std::string_view project(const consolidated::File& file) {
    const auto name = file.project();
    return name ? name->view() : "";
  }

  std::string differenceOfKernels(const consolidated::File& file) const {
    std::size_t count = 0;
    for (const consolidated::Kernel& kernel : file.kernels()) {
      if (count == tool_.kernels().size()) return "the number of kernels";
      if (!(LibraryRecord::of(kernel) == tool_.kernels()[count])) {
        return "kernel " + std::to_string(count);
      }
      ++count;
    }
    return count == tool_.kernels().size() ? "" : "the number of kernels";
  }

  std::string differenceOfDumps(const consolidated::Result<consolidated::File>& library) {
    const MemoryFile dump;
    tool_.openOrCreate(stored_.path(), false, true);
    for (const SectionKind kind : {SectionKind::ProjectName, SectionKind::Dwarf,
                                   SectionKind::KernelRecords, SectionKind::Json}) {
      dump.write("");
      tool_.dumpSection(kind, dump.path());
      std::optional<consolidated::Text> section;
      if (library) section = library->firstOf(static_cast<consolidated::SectionKind>(kind));
      if (dump.read() != (section ? section->stored() : "")) return "a dump";
    }
    return "";
  }

  MemoryFile stored_;
  ConsolidatedFile tool_;
};

}  // namespace consolidator
