#include "inspect/files/FileTraits.h"

#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstring>
#include <string>
#include <vector>

namespace consolidator::inspect {

namespace {

bool hasNone(ssize_t result) { return result == 0 || (result < 0 && errno == ENOTSUP); }

bool copyAttribute(int from, const char* name, int to) {
  const ssize_t size = ::fgetxattr(from, name, nullptr, 0);
  if (size < 0) return false;
  std::vector<char> value(static_cast<std::size_t>(size));
  if (::fgetxattr(from, name, value.data(), value.size()) != size) return false;
  return ::fsetxattr(to, name, value.data(), value.size(), 0) == 0;
}

// A file in a folder with a default list has a list of its own at once, whoever it lets in.
bool copyAccessList(int from, int to) {
  constexpr const char* name = "system.posix_acl_access";
  if (::fgetxattr(from, name, nullptr, 0) >= 0) return copyAttribute(from, name, to);
  return ::fremovexattr(to, name) == 0 || errno == ENODATA || errno == ENOTSUP;
}

bool copyAttributes(int from, int to) {
  const ssize_t size = ::flistxattr(from, nullptr, 0);
  if (hasNone(size)) return true;
  if (size < 0) return false;
  std::string names(static_cast<std::size_t>(size), '\0');
  const ssize_t got = ::flistxattr(from, names.data(), names.size());
  if (got < 0) return false;
  const char* const end = names.data() + got;
  for (const char* name = names.data(); name < end; name += std::strlen(name) + 1) {
    if (!copyAttribute(from, name, to)) return false;
  }
  return true;
}

// Many file systems have no flags.
bool copyFlags(int from, int to) {
  constexpr unsigned long meant =
      FS_APPEND_FL | FS_IMMUTABLE_FL | FS_NOATIME_FL | FS_NODUMP_FL | FS_SYNC_FL | FS_NOCOW_FL;
  unsigned long wanted = 0;
  unsigned long had = 0;
  if (::ioctl(from, FS_IOC_GETFLAGS, &wanted) != 0) return true;
  if (::ioctl(to, FS_IOC_GETFLAGS, &had) != 0) return false;
  if (((wanted ^ had) & meant) == 0) return true;
  // A file that must not change cannot be replaced either.
  if ((wanted & (FS_APPEND_FL | FS_IMMUTABLE_FL)) != 0) return false;
  had = (had & ~meant) | (wanted & meant);
  return ::ioctl(to, FS_IOC_SETFLAGS, &had) == 0;
}

}  // namespace

bool copyAccess(int from, const struct stat& old, int to) {
  return copyAccessList(from, to) && ::fchmod(to, old.st_mode & 07777U) == 0;
}

bool copyTraits(int from, const struct stat& old, int to) {
  struct stat now {};

  if (::fstat(to, &now) != 0) return false;
  const bool isOwned = now.st_uid == old.st_uid && now.st_gid == old.st_gid;
  const bool isCopied = (isOwned || ::fchown(to, old.st_uid, old.st_gid) == 0) &&
                        copyAttributes(from, to) && copyAccess(from, old, to) &&
                        copyFlags(from, to);
  // A bit that one may not set is left out without an error.
  return isCopied && ::fstat(to, &now) == 0 && now.st_mode == old.st_mode;
}

}  // namespace consolidator::inspect
