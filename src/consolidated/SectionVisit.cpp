#include "consolidated/SectionVisit.h"

#include "bytes/ByteReader.h"
#include "consolidated/StdioFile.h"

#include <algorithm>

namespace consolidator {

bool SectionVisit::visit(std::span<SectionEntry> entries) {
  return std::all_of(entries.begin(), entries.end(), [this](SectionEntry& entry) {
    entry.size = std::min(entry.size, SectionEntry::largestSize);
    if (!visitSection(entry)) return false;
    ++visited_;
    return true;
  });
}

bool SectionVisit::visitSection(const SectionEntry& entry) {
  switch (entry.kind) {
    case SectionKind::ProjectName:
      if (!entry.seek(in_) || !holdsBytes(in_, entry.size)) return false;
      projectName_ = entry;
      return true;
    case SectionKind::Dwarf:
      if (!entry.seek(in_)) return false;
      dwarf_.reset();
      if (!holdsBytes(in_, entry.size)) return false;
      dwarf_ = entry;
      return true;
    case SectionKind::KernelRecords:
      return entry.seek(in_) && visitRecords_(in_);
    case SectionKind::Json:
      return true;  // rendered anew by every save
    default:
      return false;
  }
}

std::optional<std::string> SectionVisit::readProjectName() const {
  if (!projectName_ || !projectName_->seek(in_)) return std::nullopt;
  std::string name(projectName_->size, '\0');
  if (!ByteReader(in_).readBytes(name.data(), name.size())) return std::nullopt;
  name.resize(std::min(name.find('\0'), name.size()));
  return name;
}

}  // namespace consolidator
