#include "inspect/OutputFile.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <filesystem>
#include <system_error>

namespace consolidator::inspect {

namespace {

namespace fs = std::filesystem;

constexpr int mostLinks = 40;    // as many as the system follows
constexpr int mostNames = 1000;  // that may be taken by what others left

// What a name stands for once symbolic links are followed, also when there is nothing yet.
fs::path targetOf(fs::path path) {
  std::error_code error;
  for (int i = 0; i < mostLinks && fs::is_symlink(path, error); ++i) {
    path = path.parent_path() / fs::read_symlink(path, error);  // absolute ones replace all of it
  }
  return path;
}

// Whether a name leads to that file. The links of /proc name files that have no name.
bool isNameOf(const std::string& path, const struct stat& file) {
  struct stat named {};

  return ::stat(path.c_str(), &named) == 0 && named.st_dev == file.st_dev &&
         named.st_ino == file.st_ino;
}

// Opens a new file with a name of its own in the folder of another one.
int openNewBeside(const fs::path& place, std::string& name) {
  constexpr std::size_t longestStem = NAME_MAX - 40;  // leaves room for what is added
  const std::string stem = place.filename().string().substr(0, longestStem);
  int descriptor = -1;
  for (int i = 0; i < mostNames && descriptor < 0; ++i) {
    name = place.parent_path() / fmt::format(".{}.consolidator-{}-{}", stem, ::getpid(), i);
    descriptor = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (descriptor < 0 && errno != EEXIST) break;
  }
  return descriptor;
}

}  // namespace

OutputFile::OutputFile(const std::string& path) {
  open(path);
  sink_.emplace(descriptor_);
}

OutputFile::~OutputFile() {
  if (descriptor_ >= 0) ::close(descriptor_);
  if (!beside_.empty()) ::unlink(beside_.c_str());
}

// A file that is there is opened first: whoever may not write to it may not replace it.
void OutputFile::open(const std::string& path) {
  descriptor_ = ::open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY);
  if (descriptor_ < 0 && errno == ENOENT) return openBeside(targetOf(path), nullptr);

  struct stat old {};

  note(descriptor_ >= 0 && ::fstat(descriptor_, &old) == 0);
  if (error_ != 0 || !S_ISREG(old.st_mode)) return;
  const std::string target = targetOf(path);
  if (!isNameOf(target, old)) return note(::ftruncate(descriptor_, 0) == 0);
  ::close(descriptor_);
  openBeside(target, &old);
}

void OutputFile::openBeside(const std::string& path, const struct stat* old) {
  place_ = path;
  descriptor_ = openNewBeside(path, beside_);
  note(descriptor_ >= 0);
  if (descriptor_ < 0) {
    beside_.clear();
  } else if (old != nullptr) {
    keepPermissions(*old);
  }
}

void OutputFile::keepPermissions(const struct stat& old) {
  static_cast<void>(::fchown(descriptor_, old.st_uid, old.st_gid) == 0);
  note(::fchmod(descriptor_, old.st_mode & 07777U) == 0);
}

void OutputFile::note(bool isDone) {
  if (!isDone && error_ == 0) error_ = errno;
}

bool OutputFile::finish() {
  if (error_ == 0 && !sink_->flush()) error_ = sink_->error();
  if (descriptor_ >= 0) note(::close(descriptor_) == 0);  // some systems notice a full disk here
  descriptor_ = -1;
  if (error_ == 0 && !beside_.empty()) {
    note(::rename(beside_.c_str(), place_.c_str()) == 0);
    if (error_ == 0) beside_.clear();
  }
  return error_ == 0;
}

}  // namespace consolidator::inspect
