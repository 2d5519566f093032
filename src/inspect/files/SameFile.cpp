#include "inspect/files/SameFile.h"

#include "inspect/files/FileBeside.h"

#include <sys/stat.h>

#include <filesystem>
#include <system_error>

namespace consolidator::inspect {

namespace {

bool isSameInode(const struct stat& a, const struct stat& b) {
  return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

std::string canonicalPlace(const std::string& path) {
  std::error_code error;
  const std::filesystem::path place = std::filesystem::absolute(placeOf(path), error);
  return std::filesystem::weakly_canonical(place, error);
}

}  // namespace

bool isSameFile(const std::string& path, int descriptor) {
  struct stat named {};

  struct stat open {};

  return ::stat(path.c_str(), &named) == 0 && ::fstat(descriptor, &open) == 0 &&
         isSameInode(named, open);
}

bool isSameFile(const std::string& a, const std::string& b) {
  struct stat first {};

  struct stat second {};

  const bool isFirst = ::stat(a.c_str(), &first) == 0;
  const bool isSecond = ::stat(b.c_str(), &second) == 0;
  if (isFirst || isSecond) return isFirst && isSecond && isSameInode(first, second);
  const std::string place = canonicalPlace(a);
  return !a.empty() && !b.empty() && !place.empty() && place == canonicalPlace(b);
}

}  // namespace consolidator::inspect
