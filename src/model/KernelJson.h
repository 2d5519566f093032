#pragma once

#include "model/KernelRecord.h"

namespace consolidator {

class ByteWriter;

/// Appends the JSON document of the whole list. Prepares the conditions of every kernel in place
/// before it is rendered, so rendering changes the list.
void writeKernelsJson(KernelList& kernels, ByteWriter& out);

}  // namespace consolidator
