#include "driver/Driver.h"

#include "consolidated/ConsolidatedFile.h"
#include "driver/ConsolidatorOptions.h"
#include "readers/HierarchyFile.h"

#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>

namespace consolidator {

namespace {

void printVersion() {
  std::cout << "Consolidated version: " << FileHeader::supportedMajorVersion << "."
            << FileHeader::supportedMinorVersion << std::endl
            << "Supported hierarchy version: " << HierarchyFile::supportedVersion << std::endl;
}

// A file that was opened for writing is empty by then.
void tellEmptied(const ConsolidatedFile& file, const ConsolidatorOptions& options,
                 std::string_view code, const std::string& reason) {
  if (file.observer() == nullptr || options.dumpRequested()) return;
  file.observer()->onLoss(code, "the file " + reason + " and is emptied");
}

// Only one section is dumped.
void tellSecondDump(const ConsolidatedFile& file, const ConsolidatorOptions& options) {
  if (file.observer() == nullptr || options.dumpJsonPath().empty()) return;
  file.observer()->onLoss("dump-not-written",
                          options.dumpJsonPath() + " is not written, since DWARF is dumped");
}

bool belongsToProject(const ConsolidatedFile& file, const ConsolidatorOptions& options) {
  const std::string& stored = file.projectName();
  const std::string& named = options.project();
  if (!options.add() || stored.empty() || named.empty() || stored == named) return true;
  std::cerr << "Error: consolidated file " << options.consolidatedFilePath()
            << " has meta-data for project " << stored << ", not specified project " << named
            << std::endl;
  tellEmptied(file, options, "project-differs", "belongs to another project");
  return false;
}

bool hasSupportedVersion(const ConsolidatedFile& file, const ConsolidatorOptions& options) {
  const FileHeader& header = file.header();
  if (header.majorVersion <= FileHeader::supportedMajorVersion) return true;
  std::cerr << "Error: consolidated file " << options.consolidatedFilePath() << " is version "
            << header.majorVersion << "." << header.minorVersion << " and only versions up to "
            << FileHeader::supportedMajorVersion << "." << FileHeader::supportedMinorVersion
            << " are supported." << std::endl;
  tellEmptied(file, options, "version-unsupported", "has a newer version");
  return false;
}

// The order of the kinds matters: later readers refine the kernels of earlier ones.
void addInputs(ConsolidatedFile& file, const ConsolidatorOptions& options) {
  if (!options.dwarfPath().empty()) file.addDwarf(options.dwarfPath());
  for (const std::string& path : options.hierarchyFiles()) file.addHierarchy(path);
  for (const std::string& path : options.kernelXmlFiles()) file.addKernelXml(path);
  for (const std::string& path : options.hlsFiles()) file.addHls(path);
  for (const std::string& path : options.auxiliaryFiles()) file.addAuxiliary(path);
  for (const std::string& path : options.logicLocationFiles()) file.addLogicLocations(path);
  for (const std::string& path : options.ramReportFiles()) file.addRamReport(path);
}

// What a run does with its file, which may be left open.
int consolidate(ConsolidatedFile& file, const ConsolidatorOptions& options) {
  file.openOrCreate(options.consolidatedFilePath(), options.create(), options.dumpRequested());
  if (!file.isOpen()) {
    std::cerr << "Unable to open " << options.consolidatedFilePath() << std::endl;
    return EXIT_FAILURE;
  }
  if (!belongsToProject(file, options) || !hasSupportedVersion(file, options)) return EXIT_FAILURE;
  file.setProject(options.project());

  if (!options.dumpDwarfPath().empty()) {
    file.dumpDwarf(options.dumpDwarfPath());
    tellSecondDump(file, options);
  } else if (!options.dumpJsonPath().empty()) {
    file.dumpJson(options.dumpJsonPath());
  } else {
    addInputs(file, options);
    file.save();
  }
  return EXIT_SUCCESS;
}

}  // namespace

int runConsolidation(int argc, const char* const* argv, ConsolidatedFile& file) {
  return runConsolidation(ConsolidatorOptions(argc, argv), file);
}

int runConsolidation(const ConsolidatorOptions& options, ConsolidatedFile& file) {
  if (!options.validate() || options.help()) {
    options.printUsage();
    return EXIT_SUCCESS;
  }
  if (options.version()) {
    printVersion();
    return EXIT_SUCCESS;
  }

  const int status = consolidate(file, options);
  file.closeStream();
  return status;
}

}  // namespace consolidator
