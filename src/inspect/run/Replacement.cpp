#include "inspect/run/Replacement.h"

#include "inspect/files/FileTraits.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

namespace consolidator::inspect {

namespace {

using Refusal = Replacement::Refusal;

Refusal systemRefusal(const std::string& what, int error) {
  return {what + ": " + std::generic_category().message(error), true};
}

// A file without a name lost it to another one since it was looked up.
std::optional<Refusal> refusalOf(const struct stat& file) {
  if (S_ISLNK(file.st_mode)) return Refusal{std::generic_category().message(ELOOP), true};
  if (!S_ISREG(file.st_mode)) return Refusal{"is no regular file"};
  if (file.st_nlink <= 1) return std::nullopt;
  return Refusal{"has several names (hard links), of which one alone would change"};
}

bool isSame(const struct stat& a, const struct stat& b) {
  return a.st_dev == b.st_dev && a.st_ino == b.st_ino && a.st_size == b.st_size &&
         a.st_nlink == b.st_nlink && a.st_mtim.tv_sec == b.st_mtim.tv_sec &&
         a.st_mtim.tv_nsec == b.st_mtim.tv_nsec;
}

// What is done to a folder counts once that is on the disk, too. Where folders cannot be synced,
// there is no more to do.
void syncFolderOf(const std::string& place) {
  const std::filesystem::path folder = std::filesystem::path(place).parent_path();
  const int descriptor =
      ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return;
  static_cast<void>(::fsync(descriptor));
  ::close(descriptor);
}

}  // namespace

std::variant<Replacement, Refusal> Replacement::make(const std::string& path) {
  const std::string target = placeOf(path);

  struct stat file {};

  if (::lstat(target.c_str(), &file) == 0) {
    if (auto refusal = refusalOf(file)) return *refusal;  // nothing is made beside a device
  }
  auto lock = std::make_unique<FileLock>(lockNameOf(target));
  if (!lock->isHeld()) return systemRefusal("cannot be locked", lock->error());
  removeLeftovers(target);
  Replacement replacement(std::move(lock), path, target);
  if (auto refusal = replacement.prepare()) return *refusal;
  return replacement;
}

Replacement::Replacement(std::unique_ptr<FileLock> lock, std::string path, const std::string& place)
    : lock_(std::move(lock)),
      path_(std::move(path)),
      exists_(::lstat(place.c_str(), &old_) == 0),
      file_(place, exists_ ? 0600 : 0666) {}

std::optional<Refusal> Replacement::prepare() const {
  if (file_.error() != 0) return systemRefusal("cannot be replaced", file_.error());
  if (!exists_) return std::nullopt;
  if (auto refusal = refusalOf(old_)) return refusal;
  return takeTraits();
}

std::optional<Refusal> Replacement::takeTraits() const {
  const int old = ::open(place().c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK);
  if (old < 0) return systemRefusal("cannot be read", errno);

  struct stat now {};

  const bool isAlike = ::fstat(old, &now) == 0 && copyTraits(old, now, descriptor());
  ::close(old);
  if (isAlike) return std::nullopt;
  return Refusal{"has an owner, a mode or attributes that a new file cannot be given"};
}

bool Replacement::isUnchanged() const {
  struct stat now {};

  const bool isThere = ::lstat(place().c_str(), &now) == 0;
  return isThere == exists_ && (!isThere || isSame(now, old_)) && placeOf(path_) == place();
}

// Writing takes some rights from a file, and those of the old one may have changed meanwhile.
std::optional<Refusal> Replacement::takeName() {
  const Refusal changed{"was changed by somebody else meanwhile"};
  if (!isUnchanged()) return changed;
  if (auto refusal = exists_ ? takeTraits() : std::nullopt) return refusal;
  if (::fsync(descriptor()) != 0) return systemRefusal("cannot be written", errno);
  if (!isUnchanged()) return changed;
  if (!file_.takePlace()) return systemRefusal("cannot be replaced", file_.error());
  syncFolderOf(place());
  return std::nullopt;
}

}  // namespace consolidator::inspect
