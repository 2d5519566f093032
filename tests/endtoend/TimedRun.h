#pragma once

#include <string>

namespace consolidator {

/// The start of a command of bash that runs "$0" with a time limit. It is there to tell a run that
/// waits for ever, by the status 124, and ample, since others may keep the machine busy.
inline const std::string timed = "timeout 120 \"$0\" ";

/// The same for a run that the inspector must foretell; see the script foretold-run. Nothing is
/// foretold in a build without it.
inline const std::string foretold = "${FORETELL+\"$FORETELL\" \"$INSPECT\" \"$0\"} " + timed;

}  // namespace consolidator
