#pragma once

#include "consolidated/DwarfSource.h"
#include "consolidated/FileHeader.h"
#include "consolidated/SectionEntry.h"
#include "consolidated/StdioFile.h"
#include "model/KernelRecord.h"
#include "observer/RunObserver.h"

#include <string>
#include <string_view>
#include <vector>

namespace consolidator {

class InputFile;
class OutputFiles;

/// A consolidated file in memory and the operations of one run on it. An existing file is read as
/// a whole and then truncated; save() writes all of it again. A run that stops in between leaves an
/// empty file.
///
/// Layout of the file: header (16 bytes), section table (24 bytes an entry), then the sections in
/// the order of their entries, without gaps. Positions are handled as signed 32-bit numbers, which
/// limits a file to 2 GiB.
///
/// Only printHeader() prints anything. What cannot be read is missing from the model; what cannot
/// be written is missing from the file.
class ConsolidatedFile {
 public:
  ConsolidatedFile() = default;

  /// The observer is told what the operations leave out, and all files that are written are opened
  /// by `outputs`. Both must outlive the object.
  ConsolidatedFile(RunObserver& observer, OutputFiles& outputs)
      : observer_(&observer), outputs_(&outputs) {}

  /// Null if there is none.
  RunObserver* observer() const { return observer_; }

  /// Forgets everything, reads the file at `path` unless `create` is set, and opens it: for reading
  /// if `forDump` is set, else for writing, which truncates it. See isOpen(). For a dump, only what
  /// gives header, table and project name is read. A pipe, which cannot be read or written in any
  /// order, gives no more than its header, and only if that arrives within a second.
  void openOrCreate(const std::string& path, bool create, bool forDump);

  /// Whether there is a stream to save to or to dump from.
  bool isOpen() const { return stream_ != nullptr; }

  /// Reads the file at `path` into the model up to the first thing that cannot be read, which
  /// makes the result false; what was read until then stays. The header keeps the bytes that were
  /// read even when they are not those of a consolidated file.
  bool readExisting(const std::string& path);

  /// Appends the kernels of the list that starts at the position of an open file. Returns false at
  /// the first record that cannot be read, and keeps those before it. Moves the position.
  bool readKernelRecords(std::FILE* in);

  const FileHeader& header() const { return header_; }

  const std::vector<SectionEntry>& table() const { return table_; }

  const std::string& projectName() const { return projectName_; }

  /// Empty in a file that is open to dump from.
  const KernelList& kernels() const { return kernels_; }

  /// Names the project and adds a section for the name, even if the file has one already; all of
  /// them are written with this name. An empty name changes nothing.
  void setProject(const std::string& name);

  /// Adds the DWARF file at `path` unless a DWARF section is present. A file that cannot be read,
  /// is empty, or has 2 GiB or more adds nothing. Its bytes are copied by save().
  void addDwarf(const std::string& path);

  /// Writes the stored bytes of the first section of that kind to the file at `outPath`, which is
  /// left empty when there is none or it cannot be read whole.
  void dumpSection(SectionKind kind, const std::string& outPath);

  void dumpDwarf(const std::string& outPath) { dumpSection(SectionKind::Dwarf, outPath); }

  void dumpJson(const std::string& outPath) { dumpSection(SectionKind::Json, outPath); }

  /// Lets the reader parse its input and merges its records. Nothing is merged when parsing fails;
  /// a reader that is not valid is not parsed, but hands over the records that it was given.
  void addInput(InputFile& reader);
  void addHierarchy(const std::string& path);
  void addKernelXml(const std::string& path);
  void addHls(const std::string& path);
  void addAuxiliary(const std::string& path);
  void addLogicLocations(const std::string& path);
  void addRamReport(const std::string& path);

  /// Adds the table entries that every file must have: `Json`, and `KernelRecords` once there is a
  /// kernel. In this order: rendering the JSON prepares the conditions that the records then hold.
  void ensureSections();

  /// Writes one section at the current position and sets the entry's offset and size. An entry
  /// whose position does not fit stays as it was, and nothing is written.
  void writeSection(SectionEntry& entry);

  /// Writes the whole file: the sections first, then header and table at the start.
  void save();

  /// Closes the stream; what is held stays.
  void closeStream() { stream_.reset(); }

  /// Closes the stream and frees what is held.
  void close();

  /// Lists header and table on standard output, for diagnosis. Not called here, but other code
  /// relies on it.
  void printHeader() const;

 private:
  void forget();
  void readForDump(const std::string& path);
  bool readHeader(std::FILE* in);
  bool readTable(std::FILE* in);
  bool hasSection(SectionKind kind) const;
  const SectionEntry* findSection(SectionKind kind) const;
  std::uint32_t writeProjectName();
  std::uint32_t writeKernelRecords();
  std::uint32_t writeJson();
  void tellHeader(std::size_t size) const;
  void tellDamage(std::size_t entry) const;
  void tellStoredDwarf(const std::string& path) const;
  void tellConditions() const;
  void tellSaved(const SectionEntry& entry, bool isWritten) const;
  void lose(std::string_view code, const std::string& message) const;

  RunObserver* observer_ = nullptr;
  OutputFiles* outputs_ = nullptr;
  StdioFile stream_;
  FileHeader header_;
  std::vector<SectionEntry> table_;
  std::string projectName_;
  DwarfSource dwarf_;
  KernelList kernels_;
  std::vector<std::size_t> storedConditions_;  // of an observed file: for each kernel that was read
};

}  // namespace consolidator
