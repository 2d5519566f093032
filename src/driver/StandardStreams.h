#pragma once

namespace consolidator {

/// Prepares this process for standard streams, files and pipes that are closed, full or read by
/// nobody. To be called before any file is opened. Afterwards
/// - no file gets the number of a standard stream that was closed when the process started, and
///   with it the messages meant for that stream;
/// - writing where nobody reads or beyond the largest size of a file fails and no signal is sent.
void prepareStandardStreams();

}  // namespace consolidator
