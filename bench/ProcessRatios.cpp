// Measures runs of the whole executable against system programs that have to do comparable work,
// and prints one line for each case. CPU time, not elapsed time, and of several samples the
// smallest: so the figures hold on a machine that has other things to do.

#include "Contest.h"
#include "ProcessRunner.h"
#include "RatioCases.h"

#include <boost/program_options/errors.hpp>
#include <boost/program_options/options_description.hpp>
#include <boost/program_options/parsers.hpp>
#include <boost/program_options/positional_options.hpp>
#include <boost/program_options/value_semantic.hpp>
#include <boost/program_options/variables_map.hpp>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iomanip>
#include <iostream>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace consolidator {

namespace {

namespace fs = std::filesystem;
namespace po = boost::program_options;

struct Settings {
  std::string tool;
  std::vector<std::string> only;
  int runs = 5;
  std::string folder;

  bool keepsFiles() const { return !folder.empty(); }

  bool includes(std::string_view name) const {
    return only.empty() || std::find(only.begin(), only.end(), name) != only.end();
  }
};

// A folder that exists as long as this object, or, if kept, for good.
class ScratchFolder {
 public:
  ScratchFolder(fs::path path, bool isKept) : path_(std::move(path)), isKept_(isKept) {
    fs::create_directories(path_);
  }

  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  ~ScratchFolder() {
    std::error_code error;
    if (!isKept_) fs::remove_all(path_, error);
  }

  const fs::path& path() const { return path_; }

 private:
  fs::path path_;
  bool isKept_;
};

bool areKnown(const std::vector<std::string>& names) {
  const auto cases = ratioCases();
  return std::all_of(names.begin(), names.end(), [&](const std::string& name) {
    return std::any_of(cases.begin(), cases.end(),
                       [&](const RatioCase& ratioCase) { return ratioCase.name == name; });
  });
}

std::optional<Settings> readSettings(int argc, const char* const* argv) {
  Settings settings;
  po::options_description options(
      "Usage: process_ratios [options] path/to/consolidator\n"
      "Ends with status 0 if every goal is met, 1 if one is not, 2 if a case cannot be measured.\n"
      "Options");
  options.add_options()("only", po::value(&settings.only), "Measure this case; may be repeated")(
      "runs", po::value(&settings.runs)->default_value(settings.runs), "Samples of each side")(
      "folder", po::value(&settings.folder), "Leave the files there instead of removing them")(
      "help", "Show this text")("tool", po::value(&settings.tool), "The executable to measure");
  po::positional_options_description positional;
  positional.add("tool", 1);
  try {
    po::variables_map given;
    po::store(po::command_line_parser(argc, argv).options(options).positional(positional).run(),
              given);
    po::notify(given);
  } catch (const po::error& error) {
    std::cerr << error.what() << std::endl;
    settings.tool.clear();
  }
  if (!settings.tool.empty() && settings.runs > 0 && areKnown(settings.only)) return settings;
  std::cerr << options << "Cases:";
  for (const RatioCase& ratioCase : ratioCases()) std::cerr << ' ' << ratioCase.name;
  std::cerr << std::endl;
  return std::nullopt;
}

void printHeadings() {
  std::cout << std::left << std::setw(20) << "case" << std::right << std::setw(13) << "tool CPU ms"
            << std::setw(18) << "yardstick CPU ms" << std::setw(9) << "figure" << std::setw(7)
            << "goal" << std::setw(11) << "peak MiB" << std::setw(11) << "peak goal" << std::endl;
}

double mebibytes(std::uint64_t bytes) { return static_cast<double>(bytes) / (1024.0 * 1024.0); }

void printRow(std::string_view name, const Contest& contest, const ContestResult& result) {
  constexpr double perSecond = 1000;
  std::cout << std::left << std::setw(20) << name << std::right << std::fixed
            << std::setprecision(2) << std::setw(13) << result.toolSeconds * perSecond
            << std::setw(18) << result.yardstickSeconds * perSecond << std::setw(9) << result.figure
            << std::setw(7) << contest.goal << std::setprecision(1) << std::setw(11)
            << mebibytes(result.toolPeakBytes) << std::setw(11);
  if (contest.peakGoal == 0) {
    std::cout << "-";
  } else {
    std::cout << mebibytes(contest.peakGoal);
  }
  std::cout << (result.withinGoals ? "  ok" : "  over") << std::endl;
}

// Returns the exit status.
int measureCases(const Settings& settings) {
  constexpr int overGoal = 1;
  constexpr int notMeasured = 2;
  const ProcessRunner runner;
  const fs::path root = settings.keepsFiles() ? fs::path(settings.folder)
                                              : fs::temp_directory_path() /
                                                    ("process_ratios_" + std::to_string(getpid()));
  const ScratchFolder folder(root, settings.keepsFiles());
  int status = EXIT_SUCCESS;
  printHeadings();
  for (const RatioCase& ratioCase : ratioCases()) {
    if (!settings.includes(ratioCase.name)) continue;
    const ScratchFolder caseFolder(root / ratioCase.name, settings.keepsFiles());
    const Workbench bench(runner, fs::absolute(settings.tool), caseFolder.path());
    const auto contest = ratioCase.prepare(bench);
    if (!contest) return notMeasured;
    const auto result = measureContest(runner, *contest, settings.runs);
    if (!result) return notMeasured;
    printRow(ratioCase.name, *contest, *result);
    if (!result->withinGoals) status = overGoal;
  }
  return status;
}

}  // namespace

}  // namespace consolidator

int main(int argc, char** argv) {
  constexpr int failed = 2;
  try {
    // Some yardsticks are much slower with other character sets.
    setenv("LC_ALL", "C", 1);
    const auto settings = consolidator::readSettings(argc, argv);
    return settings ? consolidator::measureCases(*settings) : failed;
  } catch (const std::exception& error) {
    std::cerr << "Error: " << error.what() << std::endl;
    return failed;
  }
}
