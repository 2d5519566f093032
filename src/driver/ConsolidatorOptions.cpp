#include "driver/ConsolidatorOptions.h"

#include "driver/CommandLineParser.h"
#include "driver/OptionErrorText.h"

#include <boost/program_options/errors.hpp>
#include <boost/program_options/value_semantic.hpp>
#include <boost/program_options/variables_map.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <iostream>

namespace po = boost::program_options;

namespace consolidator {

namespace {

po::variables_map parse(const po::options_description& description, int argc,
                        const char* const* argv) {
  const CommandLineWords words(argv, static_cast<std::size_t>(std::max(argc, 0)));
  po::variables_map given;
  po::store(parseWords(description, words.subspan(std::min(words.size(), std::size_t{1}))), given);
  po::notify(given);
  return given;
}

template <typename Value>
void takeIfGiven(const po::variables_map& given, const char* name, Value& value) {
  if (given.count(name) > 0) value = given[name].as<Value>();
}

}  // namespace

ConsolidatorOptions::ConsolidatorOptions() : options_description("Consolidator options") {
  const auto text = [] { return po::value<std::string>(); };
  const auto texts = [] { return po::value<Texts>(); };
  add_options()  //
      ("add,a", "Add information to the file as opposed to overwriting (default)")(
          "create,c", "If the file exists, overwrite it")(
          "dump-dwarf,u", text(), "Output file to dump current DWARF information to")(
          "dump-json,j", text(), "Output file to dump current JSON information to")(
          "DWARF,d", text(), "Input DWARF metadata file")("help", "Output this information")(
          "hierarchy,h", texts(), "Input hierarchy metadata file generated from System Linker")(
          "kernel,k", texts(), "Input kernel.xml meta data")(
          "hls,s", texts(), "Input kernel meta data generated from HLS")(
          "aux,x", texts(), "Input *_auxiliary.xml meta data generated from HLS")(
          "ll,l", texts(), "Input *.ll meta data generated during bitstream generation")(
          "ram,r", texts(), "Input ram utilization report file generated from synthesis")(
          "consolidated_file,f", text(), "Specify the consolidated file to add to or create")(
          "project,p", text(), "Specify the name of the project")("version,v",
                                                                  "Output version information");
}

ConsolidatorOptions::ConsolidatorOptions(int argc, const char* const* argv)
    : ConsolidatorOptions() {
  parseCommandLine(argc, argv);
}

void ConsolidatorOptions::parseCommandLine(int argc, const char* const* argv) {
  const std::optional<std::string> error = tryParse(argc, argv);
  if (!error) return;
  std::cout << *error << std::endl;
  std::exit(EXIT_SUCCESS);
}

std::optional<std::string> ConsolidatorOptions::tryParse(int argc, const char* const* argv) {
  fields_ = Fields();
  if (argc > 0) fields_.programName = argv[0];
  try {
    takeValues(parse(*this, argc, argv));
    return std::nullopt;
  } catch (const po::multiple_occurrences& error) {
    return "Unsupported multiple occurrences of : " + error.get_option_name();
  } catch (po::error_with_option_name& error) {
    return "Unknown option: " + optionErrorText(error);
  } catch (const po::error& error) {
    return std::string("Unknown option: ") + error.what();
  }
}

void ConsolidatorOptions::takeValues(const po::variables_map& given) {
  const auto isGiven = [&](const char* name) { return given.count(name) > 0; };
  fields_.bothAddAndCreate = isGiven("add") && isGiven("create");
  if (fields_.bothAddAndCreate) {
    std::cout << "Error: Cannot specify both add and create" << std::endl;
    return;
  }
  fields_.create = isGiven("create");
  fields_.add = !fields_.create;
  takeIfGiven(given, "dump-dwarf", fields_.dumpDwarfPath);
  takeIfGiven(given, "dump-json", fields_.dumpJsonPath);
  fields_.dumpRequested = isGiven("dump-dwarf") || isGiven("dump-json");
  takeIfGiven(given, "DWARF", fields_.dwarfPath);
  fields_.help = isGiven("help");
  fields_.version = isGiven("version");
  takeIfGiven(given, "hierarchy", fields_.hierarchyFiles);
  takeIfGiven(given, "kernel", fields_.kernelXmlFiles);
  takeIfGiven(given, "hls", fields_.hlsFiles);
  takeIfGiven(given, "aux", fields_.auxiliaryFiles);
  takeIfGiven(given, "ll", fields_.logicLocationFiles);
  takeIfGiven(given, "ram", fields_.ramReportFiles);
  takeIfGiven(given, "consolidated_file", fields_.consolidatedFilePath);
  takeIfGiven(given, "project", fields_.project);
}

bool ConsolidatorOptions::validate() const {
  if (fields_.bothAddAndCreate) return false;
  const bool dumps = !fields_.dumpDwarfPath.empty() || !fields_.dumpJsonPath.empty();
  if (fields_.version || fields_.help || dumps) return true;
  if (fields_.consolidatedFilePath.empty()) {
    std::cout << "Error: A consolidated file must be specified" << std::endl;
    return false;
  }
  if (!anyInput()) {
    std::cout << "No input meta-data files specified" << std::endl;
    return false;
  }
  return true;
}

void ConsolidatorOptions::printUsage() const {
  std::cout << "Usage: " << fields_.programName << " [options] --consolidated_file filename"
            << std::endl
            << std::endl
            << *this << std::endl;
}

bool ConsolidatorOptions::anyInput() const {
  return !(fields_.dwarfPath.empty() && fields_.hierarchyFiles.empty() &&
           fields_.kernelXmlFiles.empty() && fields_.hlsFiles.empty() &&
           fields_.auxiliaryFiles.empty() && fields_.logicLocationFiles.empty() &&
           fields_.ramReportFiles.empty());
}

}  // namespace consolidator
