#pragma once

#include "../tests/support/PlainAuxiliary.h"
#include "../tests/support/PlainContainer.h"
#include "../tests/support/PlainHierarchy.h"
#include "../tests/support/PlainHls.h"
#include "../tests/support/PlainLogicLocations.h"
#include "PlainKernelXml.h"
#include "RunCommand.h"
#include "model/KernelMerge.h"
#include "readers/HdlReservedWords.h"

#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator {

/// What one run of the tool must come to, put together from plain readers of its files. Only
/// elements of XML are read, and only records merged, by the code that the tool has for it.
class PlainRun {
 public:
  int status = EXIT_SUCCESS;
  std::string messages;  ///< on standard error
  std::string stored;    ///< the consolidated file afterwards
  std::string dumped;    ///< the file of the dump afterwards, if there is one

  /// The paths of the files must be set. A run that does not open the consolidated file is none.
  explicit PlainRun(const RunCommand& run)
      : stored(run.stored), run_(run), file_(run.has('c') ? "" : run.stored) {
    if (run.has('n')) {
      refuse("Unable to open " + run.path + "\n");
    } else if (run.dump() != nullptr) {
      if (mayGoOn()) dump(*run.dump());
    } else {
      stored.clear();
      if (mayGoOn()) consolidate();
    }
  }

 private:
  void refuse(const std::string& message) {
    status = EXIT_FAILURE;
    messages = message;
    if (run_.dump() != nullptr) dumped = run_.dump()->text;
  }

  // The checks that end a run.
  bool mayGoOn() {
    const auto major = static_cast<std::int32_t>(numberAt(file_.header, 4, 4));
    const auto minor = static_cast<std::int32_t>(numberAt(file_.header, 8, 4));
    const std::string start = "Error: consolidated file " + run_.path;
    if (!file_.projectName.empty() && !run_.project.empty() && file_.projectName != run_.project) {
      refuse(start + " has meta-data for project " + file_.projectName +
             ", not specified project " + run_.project + "\n");
    } else if (major > 1) {
      refuse(start + " is version " + std::to_string(major) + "." + std::to_string(minor) +
             " and only versions up to 1.1 are supported.\n");
    }
    return status == EXIT_SUCCESS;
  }

  void dump(const RunFile& target) {
    if (target.place == RunFile::Place::Itself) {
      stored.clear();
    } else {
      dumped = file_.dump(target.option == 'u' ? SectionKind::Dwarf : SectionKind::Json);
    }
  }

  void consolidate() {
    if (!run_.project.empty()) {
      file_.table.push_back({SectionKind::ProjectName});
      file_.projectName = run_.project;
    }
    if (const RunFile* const dwarf = run_.fileOf('d')) addDwarf(*dwarf);
    for (const KernelRecord& kernel : file_.kernels) kernels_.append(kernel);
    for (const char option : std::string_view("hksxlr")) {
      for (const RunFile& file : run_.files) {
        if (file.option == option) addInput(file);
      }
    }
    file_.kernels.assign(kernels_.begin(), kernels_.end());
    stored = file_.save();
  }

  // A pipe has no size: it adds nothing.
  void addDwarf(const RunFile& dwarf) {
    if (dwarf.place != RunFile::Place::File || dwarf.text.empty()) return;
    for (const SectionEntry& entry : file_.table) {
      if (entry.kind == SectionKind::Dwarf) return;
    }
    const auto size = static_cast<std::uint32_t>(dwarf.text.size());
    file_.table.push_back({SectionKind::Dwarf, 0, size});
    file_.dwarf = dwarf.text;
  }

  // Odd, but to be kept: a missing file of logic locations merges the kernels with themselves.
  void addInput(const RunFile& file) {
    if (file.place == RunFile::Place::Missing && file.option != 'l') return;
    for (const KernelRecord& kernel : recordsOf(file)) mergeKernel(kernels_, kernel);
  }

  KernelSequence recordsOf(const RunFile& file) {
    switch (file.option) {
      case 'h':
        return hierarchyRecords(file);
      case 'k':
        return kernelXmlRecords(file.content());
      case 's':
        return listOf(PlainHlsReader(file.content(), file.path).read());
      case 'x':
        return auxiliaryRecords(file);
      case 'l':
        return readLogicLocationsPlainly(file.content(), {kernels_.begin(), kernels_.end()});
      default:
        return {};  // a RAM report never adds anything
    }
  }

  static KernelSequence listOf(const std::optional<KernelRecord>& record) {
    return record ? KernelSequence{*record} : KernelSequence();
  }

  KernelSequence hierarchyRecords(const RunFile& file) {
    const PlainHierarchy plain = readHierarchyPlainly(file.content(), file.path);
    messages += plain.messages;
    return plain.result ? plain.kernels : KernelSequence();
  }

  static HdlReservedWords reservedWords() {
    HdlReservedWords words;
    buildHdlReservedWords(words);
    return words;
  }

  KernelSequence auxiliaryRecords(const RunFile& file) {
    static const HdlReservedWords words = reservedWords();
    const std::optional<KernelRecord> record = PlainAuxiliaryReader(file.content(), words).read();
    if (!record) messages += "Malformed auxiliary file: " + file.path + "\n";
    return listOf(record);
  }

  KernelSequence kernelXmlRecords(const std::string& document) {
    const std::optional<Devpack::Project> project = readProject(document);
    if (project) return PlainKernelXml(*project).records();
    messages += "Could not parse kernel file\n";
    return {};
  }

  const RunCommand& run_;
  PlainContainer file_;
  KernelList kernels_;
};

}  // namespace consolidator
