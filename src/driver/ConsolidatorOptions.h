#pragma once

#include <boost/program_options/options_description.hpp>

#include <optional>
#include <string>
#include <vector>

namespace boost::program_options {
class variables_map;
}

namespace consolidator {

/// The command line: the description of the options and, once constructed, what was given.
class ConsolidatorOptions : public boost::program_options::options_description {
 public:
  using Texts = std::vector<std::string>;

  /// Describes the options; none is given.
  ConsolidatorOptions();

  /// Describes the options and parses the command line.
  ConsolidatorOptions(int argc, const char* const* argv);

  /// Fills all fields anew. An error on the command line is printed on standard output and ends the
  /// process with status 0: build flows rely on both.
  void parseCommandLine(int argc, const char* const* argv);

  /// The same, except that the error is returned instead of printed, and nothing is ended.
  std::optional<std::string> tryParse(int argc, const char* const* argv);

  /// Whether the run may go on; prints the reason on standard output when it may not.
  bool validate() const;

  /// Prints the usage text on standard output.
  void printUsage() const;

  const std::string& programName() const { return fields_.programName; }

  bool add() const { return fields_.add; }

  bool create() const { return fields_.create; }

  const std::string& dumpDwarfPath() const { return fields_.dumpDwarfPath; }

  const std::string& dumpJsonPath() const { return fields_.dumpJsonPath; }

  /// Whether a dump option was given, even with an empty path.
  bool dumpRequested() const { return fields_.dumpRequested; }

  const std::string& dwarfPath() const { return fields_.dwarfPath; }

  bool help() const { return fields_.help; }

  const Texts& hierarchyFiles() const { return fields_.hierarchyFiles; }

  const Texts& kernelXmlFiles() const { return fields_.kernelXmlFiles; }

  const Texts& hlsFiles() const { return fields_.hlsFiles; }

  const Texts& auxiliaryFiles() const { return fields_.auxiliaryFiles; }

  const Texts& logicLocationFiles() const { return fields_.logicLocationFiles; }

  const Texts& ramReportFiles() const { return fields_.ramReportFiles; }

  const std::string& consolidatedFilePath() const { return fields_.consolidatedFilePath; }

  const std::string& project() const { return fields_.project; }

  bool version() const { return fields_.version; }

  /// Not called here, but other code relies on it.
  bool bothAddAndCreate() const { return fields_.bothAddAndCreate; }

 private:
  struct Fields {
    std::string programName;
    bool add = true;
    bool create = false;
    std::string dumpDwarfPath;
    std::string dumpJsonPath;
    bool dumpRequested = false;
    std::string dwarfPath;
    bool help = false;
    Texts hierarchyFiles;
    Texts kernelXmlFiles;
    Texts hlsFiles;
    Texts auxiliaryFiles;
    Texts logicLocationFiles;
    Texts ramReportFiles;
    std::string consolidatedFilePath;
    std::string project;
    bool version = false;
    bool bothAddAndCreate = false;
  };

  void takeValues(const boost::program_options::variables_map& given);
  bool anyInput() const;

  Fields fields_;
};

}  // namespace consolidator
