#pragma once

#include <string>

namespace consolidator {

/// The start of a command of bash that runs "$0" with a time limit, which is ample: it is there to
/// tell a run that hangs, by the status 124. Builds that check each step get more of it.
#ifdef NDEBUG
inline const std::string timed = "timeout 2 \"$0\" ";
#else
inline const std::string timed = "timeout 10 \"$0\" ";
#endif

}  // namespace consolidator
