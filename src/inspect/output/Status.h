#pragma once

#include <algorithm>

namespace consolidator::inspect {

/// Exit statuses of all commands.
enum class Status {
  Holds = 0,    ///< what was asked holds
  Fails = 1,    ///< it does not, or the file is not complete
  Unasked = 2,  ///< it could not be asked: usage, unreadable input, output that cannot be written
};

/// The status of two things of which both were asked.
inline Status worse(Status a, Status b) { return std::max(a, b); }

}  // namespace consolidator::inspect
