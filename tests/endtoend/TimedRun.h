#pragma once

#include <string>

namespace consolidator {

/// The start of a command of bash that runs "$0" with a time limit. It is there to tell a run that
/// waits for ever, by the status 124, and ample, since others may keep the machine busy.
inline const std::string timed = "timeout 120 \"$0\" ";

}  // namespace consolidator
