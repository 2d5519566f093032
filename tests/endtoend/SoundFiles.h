#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace consolidator {

/// Looks with the inspector at each consolidated file that a test lets the tool make, with "-c" or
/// where there is no file, and add to from there: all of them are sound. What a test wrote itself
/// is not looked at, nor what becomes of it; a run that fails ends the watch over its file.
class SoundFiles {
 public:
  /// Takes note of the file of a run that is about to start in a folder.
  void beforeRun(const std::vector<std::string>& arguments, const std::string& folder);

  /// Looks at the file once the run has ended with this status.
  void afterRun(int status);

 private:
  // Changes when a file is written to; the same for all that is no regular file.
  struct Stamp {
    std::uintmax_t size = 0;
    std::filesystem::file_time_type time;

    friend bool operator==(const Stamp&, const Stamp&) = default;
  };

  static Stamp stampOf(const std::filesystem::path& file);

  std::map<std::filesystem::path, Stamp> made_;
  std::filesystem::path file_;  // of the run
  Stamp before_;
  bool isWatched_ = false;
};

}  // namespace consolidator
