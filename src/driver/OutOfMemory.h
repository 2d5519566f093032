#pragma once

namespace consolidator {

/// Says on standard error that there is no memory left and ends the process with status 1.
[[noreturn]] void endOutOfMemory();

/// Makes the process end by endOutOfMemory() wherever memory runs out. An exception would be lost
/// in code that takes it for something else, such as the standard streams, and in the end there may
/// be no memory for an exception.
void endWhereMemoryRunsOut();

}  // namespace consolidator
