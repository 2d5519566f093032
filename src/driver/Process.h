#pragma once

namespace consolidator {

/// Prepares this process for a run. To be called once, before anything else. Afterwards
/// - wherever memory runs out, the process ends by endOutOfMemory();
/// - all of the heap except its first megabytes lies on huge pages, unless the memory for that
///   cannot be reserved;
/// - what prepareStandardStreams() gives.
void prepareProcess();

/// Lets the heap grow by huge pages, unless the memory for that cannot be reserved: a run that
/// holds much takes less time. To be called once, before anything large is held.
void prepareHeap();

/// Prepares this process for standard streams, files and pipes that are closed, full or read by
/// nobody. To be called before any file is opened. Afterwards
/// - no file gets the number of a standard stream that was closed at the start, and with it the
///   messages meant for that stream;
/// - writing where nobody reads, or beyond the largest size of a file, fails without a signal.
void prepareStandardStreams();

/// Says on standard error that there is no memory left and ends the process with status 1.
[[noreturn]] void endOutOfMemory();

}  // namespace consolidator
