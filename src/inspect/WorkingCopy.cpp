#include "inspect/WorkingCopy.h"

#include "inspect/FileLock.h"
#include "inspect/FileTraits.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

namespace consolidator::inspect {

namespace {

namespace fs = std::filesystem;

std::string systemReason() { return std::generic_category().message(errno); }

// A descriptor that is closed with the object.
class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}

  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  ~Descriptor() {
    if (number_ >= 0) ::close(number_);
  }

  int number() const { return number_; }

  bool isOpen() const { return number_ >= 0; }

 private:
  int number_;
};

// The file that a name leads to, which need not be there.
std::string followLinks(const std::string& path) {
  constexpr int mostLinks = 40;  // as many as the system follows
  fs::path place = path;
  std::error_code error;
  for (int i = 0; i < mostLinks && fs::is_symlink(place, error); ++i) {
    place =
        place.parent_path() / fs::read_symlink(place, error);  // absolute ones replace all of it
  }
  return place;
}

// What working copies of a file and their locks are named, except for their endings.
std::string stemBeside(const fs::path& place) {
  return place.parent_path() / fmt::format(".{}.consolidator-", place.filename().string());
}

std::string refusalOf(const std::string& place) {
  struct stat file {};

  if (::lstat(place.c_str(), &file) != 0) return {};

  if (!S_ISREG(file.st_mode)) return "is no regular file";
  if (file.st_nlink > 1) return "has several names (hard links), of which one alone would change";
  return {};
}

void removeLeftovers(const fs::path& place, const std::string& lock) {
  const std::string stem = fs::path(stemBeside(place)).filename();
  const fs::path folder = place.has_parent_path() ? place.parent_path() : ".";
  std::error_code error;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder, error)) {
    const std::string name = entry.path().filename();
    if (name.starts_with(stem) && name != fs::path(lock).filename()) {
      fs::remove(entry.path(), error);
    }
  }
}

bool isSame(const struct stat& a, const struct stat& b) {
  return a.st_dev == b.st_dev && a.st_ino == b.st_ino && a.st_size == b.st_size &&
         a.st_mtim.tv_sec == b.st_mtim.tv_sec && a.st_mtim.tv_nsec == b.st_mtim.tv_nsec;
}

bool copyThroughMemory(int from, int to) {
  std::vector<char> block(256 * 1024);
  ssize_t got = 0;
  while ((got = ::read(from, block.data(), block.size())) > 0) {
    for (ssize_t done = 0; done < got;) {
      const ssize_t written =
          ::write(to, block.data() + done, static_cast<std::size_t>(got - done));
      if (written < 0) return false;
      done += written;
    }
  }
  return got == 0;
}

// Copies up to the end of the file; inside the system where it can do that, which may share blocks.
bool copyBytes(int from, int to) {
  constexpr std::size_t most = std::size_t{1} << 30U;
  ssize_t copied = 0;
  while ((copied = ::copy_file_range(from, nullptr, to, nullptr, most, 0)) > 0) {
  }
  return copied == 0
             ? copyThroughMemory(from, to)  // some file systems end early
             : (errno == EXDEV || errno == EINVAL || errno == ENOSYS || errno == EOPNOTSUPP) &&
                   copyThroughMemory(from, to);
}

bool syncFile(const std::string& path, int flags) {
  const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | flags));
  return file.isOpen() && ::fsync(file.number()) == 0;
}

}  // namespace

std::variant<WorkingCopy, WorkingCopy::Refusal> WorkingCopy::make(const std::string& path) {
  const std::string place = followLinks(path);
  std::string reason = refusalOf(place);
  if (!reason.empty()) return Refusal{std::move(reason)};  // nothing is made beside a device
  auto lock = std::make_unique<FileLock>(stemBeside(place) + "lock");
  if (!lock->isHeld()) {
    return Refusal{"cannot be locked: " + std::generic_category().message(lock->error())};
  }
  removeLeftovers(place, stemBeside(place) + "lock");
  WorkingCopy copy(place, std::move(lock));
  reason = copy.fill();
  if (!reason.empty()) return Refusal{std::move(reason)};
  return copy;
}

WorkingCopy::WorkingCopy(std::string place, std::unique_ptr<FileLock> lock)
    : place_(std::move(place)), copy_(stemBeside(place_) + "copy"), lock_(std::move(lock)) {}

WorkingCopy::WorkingCopy(WorkingCopy&& other) noexcept
    : place_(std::move(other.place_)),
      copy_(std::exchange(other.copy_, {})),
      exists_(other.exists_),
      old_(other.old_),
      lock_(std::move(other.lock_)) {}

WorkingCopy::~WorkingCopy() {
  if (!copy_.empty()) ::unlink(copy_.c_str());
}

std::string WorkingCopy::fill() {
  exists_ = ::lstat(place_.c_str(), &old_) == 0;
  if (!exists_) {
    if (errno != ENOENT) return systemReason();
    const Descriptor empty(::open(copy_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
    return empty.isOpen() ? std::string() : systemReason();
  }
  std::string reason = refusalOf(place_);
  if (!reason.empty()) return reason;
  const Descriptor from(::open(place_.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW));
  return from.isOpen() ? copyContents(from.number()) : systemReason();
}

std::string WorkingCopy::copyContents(int from) {
  const Descriptor to(::open(copy_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
  if (!to.isOpen() || !copyBytes(from, to.number())) return systemReason();
  if (!copyTraits(from, old_, to.number())) {
    return "has an owner, a mode or attributes that a new file cannot be given";
  }
  return isUnchanged() ? std::string() : "changed while it was copied";
}

bool WorkingCopy::isUnchanged() const {
  struct stat now {};

  const bool isThere = ::lstat(place_.c_str(), &now) == 0;
  return isThere == exists_ && (!isThere || isSame(now, old_));
}

std::string WorkingCopy::takeName() {
  if (!syncFile(copy_, 0)) return systemReason();
  if (!isUnchanged()) return "was changed by somebody else meanwhile";
  if (::rename(copy_.c_str(), place_.c_str()) != 0) return systemReason();
  copy_.clear();
  const fs::path folder = fs::path(place_).parent_path();
  static_cast<void>(syncFile(folder.empty() ? "." : folder.string(), O_DIRECTORY));
  return {};
}

}  // namespace consolidator::inspect
