#include "inspect/explain/WriteForecast.h"

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <system_error>

namespace consolidator::inspect {

namespace {

namespace fs = std::filesystem;

// Of what the link names, which may be missing; empty if it is no link.
std::string linkTarget(const std::string& path) {
  std::error_code error;
  const fs::path target = fs::read_symlink(path, error);
  if (error) return {};
  return target.is_absolute() ? target.string() : (fs::path(path).parent_path() / target).string();
}

// Such a file is open for writing to everybody who adds to it, but to nobody who empties it.
bool isAppendOnly(const std::string& path) {
  struct statx status {};

  return statx(AT_FDCWD, path.c_str(), 0, STATX_TYPE, &status) == 0 &&
         (status.stx_attributes & STATX_ATTR_APPEND) != 0;
}

bool takesNewFiles(const std::string& folder) {
  struct statfs status {};

  if (statfs(folder.c_str(), &status) != 0) return false;
  if (status.f_type == PROC_SUPER_MAGIC || status.f_type == SYSFS_MAGIC) return false;
  return faccessat(AT_FDCWD, folder.c_str(), W_OK | X_OK, AT_EACCESS) == 0;
}

WriteForecast forecastCreation(const std::string& path) {
  if (path.empty() || path.back() == '/') return {};
  const fs::path folder = fs::path(path).parent_path();
  const std::string named = folder.empty() ? "." : folder.string();
  return {takesNewFiles(named), true, path};
}

}  // namespace

WriteForecast forecastWrite(const std::string& path) {
  constexpr int mostLinks = 40;
  std::string place = path;

  struct stat status {};

  for (int links = 0; links <= mostLinks; ++links) {
    if (stat(place.c_str(), &status) == 0) {
      const bool isWritable = !S_ISDIR(status.st_mode) && !S_ISSOCK(status.st_mode) &&
                              faccessat(AT_FDCWD, place.c_str(), W_OK, AT_EACCESS) == 0 &&
                              !isAppendOnly(place);
      return {isWritable, false, place};
    }
    if (errno != ENOENT) return {};
    std::string target = linkTarget(place);
    if (target.empty()) return forecastCreation(place);
    place = std::move(target);
  }
  return {};
}

}  // namespace consolidator::inspect
