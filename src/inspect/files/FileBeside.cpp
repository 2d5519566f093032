#include "inspect/files/FileBeside.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <filesystem>
#include <system_error>
#include <utility>

namespace consolidator::inspect {

namespace {

namespace fs = std::filesystem;

// What the names of all files beside a place begin with, without the folder.
std::string stemOf(const fs::path& place) {
  constexpr std::size_t longestStem = NAME_MAX - 40;  // leaves room for what is added
  return fmt::format(".{}.consolidator-", place.filename().string().substr(0, longestStem));
}

std::string nameBeside(const fs::path& place, std::string_view ending) {
  return place.parent_path() / (stemOf(place) + std::string(ending));
}

// Whoever works on a file has it locked, so that a lock that can be had is that of nobody.
void removeIfLeft(const fs::path& path) {
  const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK);
  if (descriptor < 0) return;
  if (::flock(descriptor, LOCK_EX | LOCK_NB) == 0) ::unlink(path.c_str());
  ::close(descriptor);
}

// Whether a name ends as those of files beside a place do: with the numbers of a process and of a
// file of it.
bool endsWithNumbers(std::string_view ending) {
  constexpr std::string_view digits = "0123456789";
  const std::size_t dash = ending.find_first_not_of(digits);
  return dash != 0 && dash < ending.size() - 1 && ending[dash] == '-' &&
         ending.find_first_not_of(digits, dash + 1) == std::string_view::npos;
}

}  // namespace

std::string placeOf(const std::string& path) {
  constexpr int mostLinks = 40;  // as many as the system follows
  fs::path place = path;
  std::error_code error;
  for (int i = 0; i < mostLinks && fs::is_symlink(place, error); ++i) {
    place =
        place.parent_path() / fs::read_symlink(place, error);  // absolute ones replace all of it
  }
  return place;
}

std::string lockNameOf(const std::string& place) { return nameBeside(place, "lock"); }

void removeLeftovers(const std::string& place) {
  const std::string stem = stemOf(place);
  const fs::path folder = fs::path(place).parent_path();
  std::error_code error;
  fs::directory_iterator entry(folder.empty() ? "." : folder, error);
  for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
    const std::string name = entry->path().filename();
    std::error_code unknown;
    if (!name.starts_with(stem) || !entry->is_regular_file(unknown)) continue;
    if (endsWithNumbers(std::string_view(name).substr(stem.size()))) removeIfLeft(entry->path());
  }
}

FileBeside::FileBeside(std::string place, mode_t mode) : place_(std::move(place)) {
  constexpr int mostNames = 1000;  // that may be taken by what others left
  for (int i = 0; i < mostNames; ++i) {
    path_ = nameBeside(place_, fmt::format("{}-{}", ::getpid(), i));
    descriptor_ = ::open(path_.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    if (descriptor_ < 0 && errno != EEXIST) break;
    if (descriptor_ >= 0 && isLockedByName()) return;
    if (descriptor_ >= 0) ::close(descriptor_);
    descriptor_ = -1;
  }
  note(false);
  path_.clear();
}

FileBeside::FileBeside(FileBeside&& other) noexcept
    : place_(std::move(other.place_)),
      path_(std::exchange(other.path_, {})),
      descriptor_(std::exchange(other.descriptor_, -1)),
      error_(other.error_) {}

FileBeside::~FileBeside() {
  if (!path_.empty()) ::unlink(path_.c_str());
  if (descriptor_ >= 0) ::close(descriptor_);
}

// Until the file is locked, somebody may remove it as a leftover, and has the lock while doing so.
// Where nothing can be locked, nobody can.
bool FileBeside::isLockedByName() const {
  struct stat status {};

  if (::flock(descriptor_, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) return false;
  return ::fstat(descriptor_, &status) == 0 && status.st_nlink > 0;
}

// The duplicate keeps the lock until the file has its name.
bool FileBeside::takePlace() {
  if (descriptor_ < 0) return false;
  const int locked = ::dup(descriptor_);
  note(::close(std::exchange(descriptor_, -1)) == 0);  // some systems notice a full disk here
  if (error_ == 0) note(::rename(path_.c_str(), place_.c_str()) == 0);
  if (error_ == 0) path_.clear();
  if (locked >= 0) ::close(locked);
  return error_ == 0;
}

void FileBeside::note(bool isDone) {
  if (!isDone && error_ == 0) error_ = errno;
}

}  // namespace consolidator::inspect
