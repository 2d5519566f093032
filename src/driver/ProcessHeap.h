#pragma once

namespace consolidator {

/// Prepares the heap of this process for millions of small texts: all but its first megabytes lie
/// on huge pages, which halves what the system spends on a large run. To be called once, before
/// anything else. Where the memory cannot be reserved, the heap stays as it is.
void prepareProcessHeap();

}  // namespace consolidator
