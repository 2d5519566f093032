#pragma once

#include <sys/stat.h>

namespace consolidator::inspect {

/// Gives an open file the mode and the access control list of another one, or no list where that
/// one has none. Returns whether it has them then.
bool copyAccess(int from, const struct stat& old, int to);

/// Gives an open file the owner, group, mode, extended attributes (access control lists among them)
/// and flags of another one. Returns whether it has all of them then.
bool copyTraits(int from, const struct stat& old, int to);

}  // namespace consolidator::inspect
