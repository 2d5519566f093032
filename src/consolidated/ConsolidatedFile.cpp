#include "consolidated/ConsolidatedFile.h"

#include "bytes/ByteReader.h"
#include "bytes/ByteWriter.h"
#include "consolidated/OutputFiles.h"
#include "consolidated/SectionVisit.h"
#include "model/ConditionPreparer.h"
#include "model/KernelJson.h"
#include "readers/AuxiliaryXMLFile.h"
#include "readers/HLSFile.h"
#include "readers/HierarchyFile.h"
#include "readers/KernelFile.h"
#include "readers/LLFile.h"
#include "readers/RAMFile.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <iostream>
#include <optional>
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

// Adds what a reader reads, and tells the observer, if there is one, about that.
void addObservedInput(ConsolidatedFile& file, InputFile& reader, InputKind kind,
                      const std::string& path) {
  RunObserver* const observer = file.observer();
  if (observer != nullptr) {
    observer->onInputBegin(kind, path);
    reader.observe(*observer);
  }
  file.addInput(reader);
  if (observer != nullptr) observer->onInputEnd(reader.extent());
}

// Constructs a reader on the file and adds what it reads.
template <typename Reader, InputKind kind, typename... Known>
void addFile(ConsolidatedFile& file, const std::string& path, const Known&... known) {
  Reader reader(path.c_str(), known...);
  addObservedInput(file, reader, kind, path);
}

void writeBytes(std::FILE* stream, std::string_view bytes) {
  ByteWriter out(stream);
  out.write(bytes);
  out.flush();
}

}  // namespace

void ConsolidatedFile::openOrCreate(const std::string& path, bool create, bool forDump) {
  forget();
  if (!create && forDump) readForDump(path);
  if (!create && !forDump) readExisting(path);
  if (forDump || outputs_ == nullptr) {
    stream_ = openStdioFileAtOnce(path, forDump ? "r" : "w");
  } else {
    stream_ = outputs_->openConsolidatedFile(path);
  }
}

void ConsolidatedFile::forget() {
  ConsolidatedFile fresh;
  fresh.observer_ = observer_;
  fresh.outputs_ = outputs_;
  *this = std::move(fresh);
}

bool ConsolidatedFile::readExisting(const std::string& path) {
  const StdioFile in = openStdioFileAtOnce(path, "r");
  if (!in || !readHeader(in.get()) || !readTable(in.get())) return false;
  SectionVisit visit(in.get(), [this](std::FILE* records) { return readKernelRecords(records); });
  const bool isWhole = visit.visit(table_);
  if (auto name = visit.readProjectName()) projectName_ = std::move(*name);
  if (visit.dwarf()) dwarf_.readSection(in.get(), *visit.dwarf());
  if (observer_ != nullptr) {
    if (!isWhole) tellDamage(visit.visited());
    for (const KernelRecord& kernel : kernels_) {
      storedConditions_.push_back(kernel.breakableConditions.size());
    }
  }
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
  if (observer_ != nullptr) tellHeader(got);
  return got == bytes.size() && header_.hasExpectedMagic();
}

bool ConsolidatedFile::readTable(std::FILE* in) {
  ByteReader reader(in);
  table_.reserve(reader.plausibleCount(header_.sectionCount, sizeof(SectionEntry)));
  for (std::uint32_t i = 0; i < header_.sectionCount; ++i) {
    SectionEntry entry;
    if (!entry.readBinary(reader)) {
      lose("damaged", "the section table ends early: nothing of the file is kept");
      return false;
    }
    table_.push_back(entry);
    if (observer_ != nullptr) {
      observer_->onStoredSection(static_cast<std::uint32_t>(entry.kind), entry.offset, entry.size);
    }
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
  if (observer_ != nullptr) observer_->onInputBegin(InputKind::Dwarf, path);
  std::uint32_t size = 0;
  if (!hasSection(SectionKind::Dwarf)) {
    size = dwarf_.openFile(path, observer_).value_or(0);
    if (size > 0) table_.push_back({SectionKind::Dwarf, 0, size});
  } else if (observer_ != nullptr) {
    tellStoredDwarf(path);
  }
  if (observer_ != nullptr) observer_->onInputEnd({size, std::nullopt});
}

void ConsolidatedFile::dumpSection(SectionKind kind, const std::string& outPath) {
  if (!stream_) return;
  const StdioFile out = outputs_ ? outputs_->openDump(outPath) : openStdioFile(outPath, "w");
  if (!out) return lose("dump-not-written", outPath + " cannot be opened for writing");
  const SectionEntry* entry = findSection(kind);
  if (entry == nullptr) return lose("dump-empty", "the file has no such section");
  if (!entry->seek(stream_.get()) || ByteReader(stream_.get()).remaining() < entry->size) {
    return lose("dump-empty", "the section lies outside the file");
  }
  if (copyBytes(stream_.get(), out.get(), entry->size) < entry->size) {
    lose("dump-short", "the section cannot be read to its end");
  }
}

void ConsolidatedFile::addInput(InputFile& reader) {
  if (reader.isValid() && !reader.parse()) return;
  reader.mergeInto(kernels_);
}

void ConsolidatedFile::addHierarchy(const std::string& path) {
  addFile<HierarchyFile, InputKind::Hierarchy>(*this, path);
}

void ConsolidatedFile::addKernelXml(const std::string& path) {
  addFile<KernelFile, InputKind::KernelXml>(*this, path);
}

void ConsolidatedFile::addHls(const std::string& path) {
  addFile<HLSFile, InputKind::Hls>(*this, path);
}

void ConsolidatedFile::addAuxiliary(const std::string& path) {
  addFile<AuxiliaryXMLFile, InputKind::Auxiliary>(*this, path);
}

// Odd, but to be kept: a file that cannot be opened merges the copies unchanged. It shows where two
// stored kernels have the same name: the first one takes what it lacks from the other.
void ConsolidatedFile::addLogicLocations(const std::string& path) {
  LLFile reader(path.c_str());
  reader.setKernels(kernels_);
  addObservedInput(*this, reader, InputKind::LogicLocations, path);
}

void ConsolidatedFile::addRamReport(const std::string& path) {
  addFile<RAMFile, InputKind::RamReport>(*this, path, kernels_);
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
  if (position < 0) return tellSaved(entry, false);
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
  tellSaved(entry, true);
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
  if (observer_ != nullptr) tellConditions();
  ByteWriter out(stream_.get());
  writeKernelsJson(kernels_, out);
  out.write(std::string_view("\0", 1));
  return out.flush() ? static_cast<std::uint32_t>(out.accepted()) : 0;
}

void ConsolidatedFile::close() { forget(); }

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

void ConsolidatedFile::tellHeader(std::size_t size) const {
  if (size > 0 && size < FileHeader::encodedSize) {
    lose("damaged", "the file is shorter than its header: nothing of it is kept");
  } else if (size > 0 && !header_.hasExpectedMagic()) {
    lose("foreign-magic",
         "the file is no consolidated file: nothing of it is kept, and its magic stays wrong");
  }
}

void ConsolidatedFile::tellDamage(std::size_t entry) const {
  lose("damaged", "section " + std::to_string(entry) + " of " + std::to_string(table_.size()) +
                      ", counted from 0, cannot be read: it and what follows is lost, except " +
                      std::to_string(kernels_.size()) + " kernels before the damage");
}

void ConsolidatedFile::tellStoredDwarf(const std::string& path) const {
  struct stat status {};

  if (stat(path.c_str(), &status) != 0) return observer_->onSkipped(errno);
  if (S_ISDIR(status.st_mode)) return observer_->onSkipped(EISDIR);
  // The run does not open the file, and opening a pipe could take its bytes or wait for ever.
  const bool isComparable = S_ISREG(status.st_mode) && status.st_size > 0;
  const StdioFile file = isComparable ? openStdioFile(path, "r") : nullptr;
  if (isComparable && !file) return observer_->onSkipped(errno);
  const bool isSame = file && dwarf_.isSameAs(file.get());
  observer_->onUnread(isSame ? "the file has this DWARF already" : "the file has DWARF already");
  if (isComparable && !isSame) {
    lose("dwarf-differs", "the file keeps the DWARF that it has, and " + path + " is another one");
  }
}

void ConsolidatedFile::tellConditions() const {
  ConditionPreparer preparer;
  for (std::size_t i = 0; i < kernels_.size(); ++i) {
    const std::size_t stored = i < storedConditions_.size() ? storedConditions_[i] : 0;
    const BreakableConditionList& list = kernels_[i].breakableConditions;
    for (std::size_t j = 0; j < list.size(); ++j) {
      PreparedCondition told{
          kernels_[i].name, j == 0,       static_cast<std::uint32_t>(list[j].kind),
          list[j].line,     list[j].file, list[j].condition,
          std::nullopt,     j < stored};
      if (!isTriviallyTrue(told.before)) told.after = preparer.prepare(told.before);
      observer_->onCondition(told);
    }
  }
}

void ConsolidatedFile::tellSaved(const SectionEntry& entry, bool isWritten) const {
  if (observer_ == nullptr) return;
  observer_->onSavedSection(static_cast<std::uint32_t>(entry.kind), entry.offset, entry.size,
                            isWritten);
}

void ConsolidatedFile::lose(std::string_view code, const std::string& message) const {
  if (observer_ != nullptr) observer_->onLoss(code, message);
}

}  // namespace consolidator
