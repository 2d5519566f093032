#include "endtoend/SoundFiles.h"

#include "endtoend/ExecutableRun.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <system_error>

namespace consolidator {

namespace {

namespace fs = std::filesystem;

// Empty in a build without it.
constexpr const char* inspector = CONSOLIDATOR_INSPECT_EXECUTABLE;

bool isGiven(const std::vector<std::string>& arguments, const std::string& option) {
  return std::find(arguments.begin(), arguments.end(), option) != arguments.end();
}

}  // namespace

void SoundFiles::beforeRun(const std::vector<std::string>& arguments, const std::string& folder) {
  const auto option = std::find(arguments.begin(), arguments.end(), "-f");
  isWatched_ = option != arguments.end() && std::next(option) != arguments.end();
  if (!isWatched_) return;
  file_ = fs::path(folder) / *std::next(option);
  before_ = stampOf(file_);
  if (isGiven(arguments, "-c") || before_ == Stamp()) return;
  const auto known = made_.find(file_);
  isWatched_ = known != made_.end() && known->second == before_;
}

void SoundFiles::afterRun(int status) {
  made_.erase(file_);
  const Stamp after = stampOf(file_);
  if (!isWatched_ || status != 0 || after == Stamp() || after == before_) return;
  made_[file_] = after;
  // Memory faults meet every program that is started.
  if (*inspector == '\0' || std::getenv("LD_PRELOAD") != nullptr) return;
  const ExecutableRun run(inspector, {"consolidator-inspect", "verify", file_.string()}, "/");
  EXPECT_EQ(run.outcome().status, 0) << run.outcome();
}

SoundFiles::Stamp SoundFiles::stampOf(const fs::path& file) {
  std::error_code none;
  if (!fs::is_regular_file(file, none)) return {};
  return {fs::file_size(file, none), fs::last_write_time(file, none)};
}

}  // namespace consolidator
