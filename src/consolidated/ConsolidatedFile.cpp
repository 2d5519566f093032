#include "consolidated/ConsolidatedFile.h"

#include "bytes/ByteReader.h"
#include "bytes/ByteWriter.h"
#include "consolidated/SectionVisit.h"
#include "model/KernelJson.h"
#include "readers/AuxiliaryXMLFile.h"
#include "readers/HLSFile.h"
#include "readers/HierarchyFile.h"
#include "readers/KernelFile.h"
#include "readers/LLFile.h"
#include "readers/RAMFile.h"

#include <algorithm>
#include <cstdint>
#include <iostream>
#include <set>
#include <string_view>
#include <utility>

namespace consolidator {

namespace {

// Reads the number of records at the stream's position and calls `readRecord(in)` for each of them
// until it returns false. Returns whether all of them could be read.
template <typename ReadRecord>
bool forEachRecord(std::FILE* stream, ReadRecord readRecord) {
  ByteReader in(stream);
  std::uint32_t count = 0;
  if (!in.readU32(count)) return false;
  for (std::uint32_t i = 0; i < count; ++i) {
    if (!readRecord(in)) return false;
  }
  return true;
}

// Goes through lists of records without keeping any, and only once through one that many entries
// share.
class RecordSkipper {
 public:
  bool operator()(std::FILE* stream) {
    const long start = std::ftell(stream);
    if (wholeLists_.contains(start)) return true;
    if (!forEachRecord(stream, KernelRecord::skipBinary)) return false;
    wholeLists_.insert(start);
    return true;
  }

 private:
  std::set<long> wholeLists_;  // where they start
};

// Constructs a reader on the file and adds what it reads.
template <typename Reader, typename... Known>
void addFile(ConsolidatedFile& file, const std::string& path, const Known&... known) {
  Reader reader(path.c_str(), known...);
  file.addInput(reader);
}

void writeBytes(std::FILE* stream, std::string_view bytes) {
  ByteWriter out(stream);
  out.write(bytes);
  out.flush();
}

}  // namespace

void ConsolidatedFile::openOrCreate(const std::string& path, bool create, bool forDump) {
  *this = ConsolidatedFile();
  if (!create && forDump) readForDump(path);
  if (!create && !forDump) readExisting(path);
  stream_ = openStdioFileAtOnce(path, forDump ? "r" : "w");
}

bool ConsolidatedFile::readExisting(const std::string& path) {
  const StdioFile in = openStdioFileAtOnce(path, "r");
  if (!in || !readHeader(in.get()) || !readTable(in.get())) return false;
  SectionVisit visit(in.get(), [this](std::FILE* records) { return readKernelRecords(records); });
  const bool isWhole = visit.visit(table_);
  if (auto name = visit.readProjectName()) projectName_ = std::move(*name);
  if (visit.dwarf()) dwarf_.readSection(in.get(), *visit.dwarf());
  return isWhole;
}

// A dump needs the table, its sizes clamped, and the project's name. Sections before the last of
// these must still be checked, since reading ends at the first damaged one.
void ConsolidatedFile::readForDump(const std::string& path) {
  const StdioFile in = openStdioFileAtOnce(path, "r");
  if (!in || !readHeader(in.get()) || !readTable(in.get())) return;
  const auto last = std::find_if(table_.rbegin(), table_.rend(), [](const SectionEntry& entry) {
    return entry.kind == SectionKind::ProjectName || entry.size > SectionEntry::largestSize;
  });
  SectionVisit visit(in.get(), RecordSkipper());
  visit.visit({table_.begin(), last.base()});
  if (auto name = visit.readProjectName()) projectName_ = std::move(*name);
}

// A file that is too short overwrites only the bytes it has. Whatever was read is kept: the caller
// checks the versions, and even a foreign magic is written back.
bool ConsolidatedFile::readHeader(std::FILE* in) {
  if (!awaitBytes(in)) return false;
  FileHeader::Bytes bytes = header_.encode();
  const std::size_t got = std::fread(bytes.data(), 1, bytes.size(), in);
  header_ = FileHeader::decode(bytes);
  return got == bytes.size() && header_.hasExpectedMagic();
}

bool ConsolidatedFile::readTable(std::FILE* in) {
  ByteReader reader(in);
  table_.reserve(reader.plausibleCount(header_.sectionCount, sizeof(SectionEntry)));
  for (std::uint32_t i = 0; i < header_.sectionCount; ++i) {
    SectionEntry entry;
    if (!entry.readBinary(reader)) return false;
    table_.push_back(entry);
  }
  return true;
}

// Records are appended as they are, not merged.
bool ConsolidatedFile::readKernelRecords(std::FILE* in) {
  return forEachRecord(in, [this](ByteReader& record) {
    KernelRecord kernel;
    if (!kernel.readBinary(record)) return false;
    kernels_.append(std::move(kernel));
    return true;
  });
}

void ConsolidatedFile::setProject(const std::string& name) {
  if (name.empty()) return;
  // Odd, but to be kept: files grow by an entry with every run that names the project.
  table_.push_back({SectionKind::ProjectName, 0, static_cast<std::uint32_t>(name.size())});
  projectName_ = name;
}

void ConsolidatedFile::addDwarf(const std::string& path) {
  if (hasSection(SectionKind::Dwarf)) return;
  if (const auto size = dwarf_.openFile(path)) table_.push_back({SectionKind::Dwarf, 0, *size});
}

void ConsolidatedFile::dumpSection(SectionKind kind, const std::string& outPath) {
  if (!stream_) return;
  const StdioFile out = openStdioFile(outPath, "w");
  const SectionEntry* entry = findSection(kind);
  if (!out || entry == nullptr || !entry->seek(stream_.get())) return;
  if (ByteReader(stream_.get()).remaining() < entry->size) return;
  copyBytes(stream_.get(), out.get(), entry->size);
}

void ConsolidatedFile::addInput(InputFile& reader) {
  if (reader.isValid() && !reader.parse()) return;
  reader.mergeInto(kernels_);
}

void ConsolidatedFile::addHierarchy(const std::string& path) {
  addFile<HierarchyFile>(*this, path);
}

void ConsolidatedFile::addKernelXml(const std::string& path) { addFile<KernelFile>(*this, path); }

void ConsolidatedFile::addHls(const std::string& path) { addFile<HLSFile>(*this, path); }

void ConsolidatedFile::addAuxiliary(const std::string& path) {
  addFile<AuxiliaryXMLFile>(*this, path);
}

// Odd, but to be kept: a file that cannot be opened merges the copies unchanged. It shows where two
// stored kernels have the same name: the first one takes what it lacks from the other.
void ConsolidatedFile::addLogicLocations(const std::string& path) {
  LLFile reader(path.c_str());
  reader.setKernels(kernels_);
  addInput(reader);
}

void ConsolidatedFile::addRamReport(const std::string& path) {
  addFile<RAMFile>(*this, path, kernels_);
}

void ConsolidatedFile::ensureSections() {
  if (!hasSection(SectionKind::Json)) table_.push_back({SectionKind::Json});
  if (!kernels_.empty() && !hasSection(SectionKind::KernelRecords)) {
    table_.push_back({SectionKind::KernelRecords});
  }
}

void ConsolidatedFile::save() {
  if (!stream_) return;
  ensureSections();
  const std::size_t sectionsStart =
      FileHeader::encodedSize + SectionEntry::encodedSize * table_.size();
  if (fseeko(stream_.get(), static_cast<off_t>(sectionsStart), SEEK_SET) != 0) return;
  for (SectionEntry& entry : table_) writeSection(entry);

  header_.sectionCount = static_cast<std::uint32_t>(table_.size());
  if (std::fseek(stream_.get(), 0, SEEK_SET) != 0) return;
  ByteWriter out(stream_.get());
  const FileHeader::Bytes headerBytes = header_.encode();
  out.write({headerBytes.data(), headerBytes.size()});
  for (const SectionEntry& entry : table_) entry.writeBinary(out);
  out.flush();
}

void ConsolidatedFile::writeSection(SectionEntry& entry) {
  const auto position = static_cast<std::int32_t>(std::ftell(stream_.get()));
  if (position < 0) return;
  entry.offset = static_cast<std::uint64_t>(position);
  switch (entry.kind) {
    case SectionKind::ProjectName:
      entry.size = writeProjectName();
      break;
    case SectionKind::Dwarf:
      entry.size = dwarf_.write(stream_.get(), entry.size);
      break;
    case SectionKind::KernelRecords:
      entry.size = writeKernelRecords();
      break;
    case SectionKind::Json:
      entry.size = writeJson();
      break;
    default:
      break;
  }
}

std::uint32_t ConsolidatedFile::writeProjectName() {
  writeBytes(stream_.get(), projectName_);
  return static_cast<std::uint32_t>(projectName_.size());
}

std::uint32_t ConsolidatedFile::writeKernelRecords() {
  ByteWriter out(stream_.get());
  out.writeU32(static_cast<std::uint32_t>(kernels_.size()));
  for (const KernelRecord& kernel : kernels_) kernel.writeBinary(out);
  out.flush();
  return static_cast<std::uint32_t>(out.accepted());
}

std::uint32_t ConsolidatedFile::writeJson() {
  ByteWriter out(stream_.get());
  writeKernelsJson(kernels_, out);
  out.write(std::string_view("\0", 1));
  return out.flush() ? static_cast<std::uint32_t>(out.accepted()) : 0;
}

void ConsolidatedFile::close() { *this = ConsolidatedFile(); }

void ConsolidatedFile::printHeader() const {
  std::cout << "Magic number: " << std::hex << header_.magic << std::dec << std::endl
            << "Major Version: " << header_.majorVersion << std::endl
            << "Minor Version: " << header_.minorVersion << std::endl
            << "Num sections: " << header_.sectionCount << std::endl;
  for (std::size_t i = 0; i < table_.size(); ++i) {
    std::cout << "Section " << i << ": " << static_cast<std::uint32_t>(table_[i].kind) << std::endl
              << "Offset: " << table_[i].offset << std::endl
              << "Size: " << table_[i].size << std::endl;
  }
}

const SectionEntry* ConsolidatedFile::findSection(SectionKind kind) const {
  const auto found = std::find_if(table_.begin(), table_.end(),
                                  [&](const SectionEntry& entry) { return entry.kind == kind; });
  return found == table_.end() ? nullptr : &*found;
}

bool ConsolidatedFile::hasSection(SectionKind kind) const { return findSection(kind) != nullptr; }

}  // namespace consolidator
