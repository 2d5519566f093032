#pragma once

#include <sys/xattr.h>

#include <array>
#include <cstdint>
#include <string>

namespace consolidator {

/// Has every new file in a folder let in one more user. Returns whether the file system can do
/// that.
inline bool giveDefaultAccessList(const std::string& folder) {
  struct Entry {
    std::uint16_t tag;
    std::uint16_t rights;
    std::uint32_t id;
  };

  struct List {
    std::uint32_t version;
    std::array<Entry, 5> entries;
  };

  constexpr std::uint32_t nobody = ~0U;
  const List list{2,
                  {{{0x01, 7, nobody},  // owner
                    {0x02, 6, 4321},    // user
                    {0x04, 5, nobody},  // group
                    {0x10, 7, nobody},  // the most that the two before may have
                    {0x20, 5, nobody}}}};
  return ::setxattr(folder.c_str(), "system.posix_acl_default", &list, sizeof list, 0) == 0;
}

/// Whether a file has an access control list.
inline bool hasAccessList(const std::string& path) {
  return ::getxattr(path.c_str(), "system.posix_acl_access", nullptr, 0) > 0;
}

}  // namespace consolidator
