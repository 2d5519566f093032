#pragma once

#include <boost/program_options/options_description.hpp>

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

  /// Describes the options and parses the command line.
  ConsolidatorOptions(int argc, const char* const* argv);

  /// Fills the fields. An error on the command line is printed on standard output and ends the
  /// process with status 0: build flows count on both.
  void parseCommandLine(int argc, const char* const* argv);

  /// Whether the run may go on; prints the reason on standard output when it may not.
  bool validate() const;

  /// Prints the usage text on standard output.
  void printUsage() const;

  const std::string& programName() const { return programName_; }

  bool add() const { return add_; }

  bool create() const { return create_; }

  const std::string& dumpDwarfPath() const { return dumpDwarfPath_; }

  const std::string& dumpJsonPath() const { return dumpJsonPath_; }

  /// Whether a dump option was given, even with an empty path.
  bool dumpRequested() const { return dumpRequested_; }

  const std::string& dwarfPath() const { return dwarfPath_; }

  bool help() const { return help_; }

  const Texts& hierarchyFiles() const { return hierarchyFiles_; }

  const Texts& kernelXmlFiles() const { return kernelXmlFiles_; }

  const Texts& hlsFiles() const { return hlsFiles_; }

  const Texts& auxiliaryFiles() const { return auxiliaryFiles_; }

  const Texts& logicLocationFiles() const { return logicLocationFiles_; }

  const Texts& ramReportFiles() const { return ramReportFiles_; }

  const std::string& consolidatedFilePath() const { return consolidatedFilePath_; }

  const std::string& project() const { return project_; }

  bool version() const { return version_; }

  /// Nothing here asks for it; other code is bound to it.
  bool bothAddAndCreate() const { return bothAddAndCreate_; }

 private:
  void takeValues(const boost::program_options::variables_map& given);
  bool anyInput() const;

  std::string programName_;
  bool add_ = true;
  bool create_ = false;
  std::string dumpDwarfPath_;
  std::string dumpJsonPath_;
  bool dumpRequested_ = false;
  std::string dwarfPath_;
  bool help_ = false;
  Texts hierarchyFiles_;
  Texts kernelXmlFiles_;
  Texts hlsFiles_;
  Texts auxiliaryFiles_;
  Texts logicLocationFiles_;
  Texts ramReportFiles_;
  std::string consolidatedFilePath_;
  std::string project_;
  bool version_ = false;
  bool bothAddAndCreate_ = false;
};

}  // namespace consolidator
