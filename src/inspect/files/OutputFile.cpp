#include "inspect/files/OutputFile.h"

#include "inspect/files/FileTraits.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace consolidator::inspect {

namespace {

// Whether a name leads to that file. The links of /proc name files that have no name.
bool isNameOf(const std::string& path, const struct stat& file) {
  struct stat named {};

  return ::stat(path.c_str(), &named) == 0 && named.st_dev == file.st_dev &&
         named.st_ino == file.st_ino;
}

}  // namespace

OutputFile::OutputFile(const std::string& path) {
  open(path);
  sink_.emplace(beside_ ? beside_->descriptor() : descriptor_);
}

OutputFile::~OutputFile() {
  if (descriptor_ >= 0) ::close(descriptor_);
}

// A file that is there is opened first: whoever may not write to it may not replace it.
void OutputFile::open(const std::string& path) {
  descriptor_ = ::open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY);
  if (descriptor_ < 0 && errno == ENOENT) return openBeside(placeOf(path), nullptr);

  struct stat old {};

  note(descriptor_ >= 0 && ::fstat(descriptor_, &old) == 0);
  if (error_ != 0 || !S_ISREG(old.st_mode)) return;
  const std::string place = placeOf(path);
  if (!isNameOf(place, old)) return note(::ftruncate(descriptor_, 0) == 0);
  openBeside(place, &old);
  ::close(std::exchange(descriptor_, -1));
}

void OutputFile::openBeside(const std::string& place, const struct stat* old) {
  removeLeftovers(place);
  beside_.emplace(place, old != nullptr ? 0600 : 0666);  // nobody may look in sooner
  error_ = beside_->error();
  if (error_ == 0 && old != nullptr) keepPermissions(*old);
}

void OutputFile::keepPermissions(const struct stat& old) {
  static_cast<void>(::fchown(beside_->descriptor(), old.st_uid, old.st_gid) == 0);
  note(copyAccess(descriptor_, old, beside_->descriptor()));
}

void OutputFile::note(bool isDone) {
  if (!isDone && error_ == 0) error_ = errno;
}

bool OutputFile::finish() {
  if (error_ == 0 && !sink_->flush()) error_ = sink_->error();
  if (error_ == 0 && beside_ && !beside_->takePlace()) error_ = beside_->error();
  if (descriptor_ >= 0) note(::close(std::exchange(descriptor_, -1)) == 0);
  return error_ == 0;
}

}  // namespace consolidator::inspect
