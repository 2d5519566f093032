#include "inspect/explain/UntouchedFiles.h"

#include "inspect/explain/NullStream.h"
#include "inspect/explain/WriteForecast.h"
#include "inspect/files/SameFile.h"

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <system_error>

namespace consolidator::inspect {

namespace {

namespace fs = std::filesystem;

std::string canonical(const std::string& path) {
  std::error_code error;
  const fs::path found = fs::weakly_canonical(fs::absolute(path, error), error);
  return error ? path : found.string();
}

}  // namespace

StdioFile UntouchedFiles::openConsolidatedFile(const std::string& path) {
  const WriteForecast forecast = forecastWrite(path);
  if (!forecast.isPossible) return nullptr;

  struct stat status {};

  if (forecast.isMissing) {
    created_ = canonical(forecast.path);
  } else if (stat(forecast.path.c_str(), &status) != 0) {
    return nullptr;
  } else if (S_ISFIFO(status.st_mode)) {
    return openStdioFileAtOnce(path, "w");  // takes nothing that is positioned
  } else if (S_ISREG(status.st_mode)) {
    existing_ = Place{status.st_dev, status.st_ino};
  }
  isOpened_ = true;
  return openNullStream();
}

StdioFile UntouchedFiles::openDump(const std::string& path) {
  const WriteForecast forecast = forecastWrite(path);
  if (!forecast.isPossible) return nullptr;

  if (isSameFile(path, STDOUT_FILENO)) return openNullStream(&dumpedOut_);
  if (isSameFile(path, STDERR_FILENO)) return openNullStream(&dumpedErr_);
  return openNullStream();
}

bool UntouchedFiles::isEmptied(const std::string& path) const {
  struct stat status {};

  if (stat(path.c_str(), &status) != 0) {
    return !created_.empty() && !path.empty() && canonical(forecastWrite(path).path) == created_;
  }
  return existing_ && existing_->device == status.st_dev && existing_->inode == status.st_ino;
}

}  // namespace consolidator::inspect
